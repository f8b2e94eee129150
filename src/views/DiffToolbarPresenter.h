#pragma once

#include "app/DiffViewModel.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <qqml.h>

namespace vantrel {

/// The words and numbers of the diff screen's toolbar. Thread: interface.
class DiffToolbarPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vantrel::DiffViewModel *diff READ diff WRITE setDiff NOTIFY changed)
    Q_PROPERTY(QString folder READ folder NOTIFY changed)
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(QString status READ status NOTIFY changed)
    Q_PROPERTY(int additions READ additions NOTIFY changed)
    Q_PROPERTY(int deletions READ deletions NOTIFY changed)
    Q_PROPERTY(QString position READ position NOTIFY changed)
    Q_PROPERTY(QString previousName READ previousName NOTIFY changed)
    Q_PROPERTY(QString nextName READ nextName NOTIFY changed)
    Q_PROPERTY(bool hasNothingToShow READ hasNothingToShow NOTIFY changed)

public:
    using QObject::QObject;

    [[nodiscard]] DiffViewModel *diff() const { return m_diff; }
    void setDiff(DiffViewModel *diff);

    [[nodiscard]] QString folder() const; ///< Of the path, with its last slash.
    [[nodiscard]] QString name() const;
    [[nodiscard]] QString status() const; ///< "M", "A" or "D".
    [[nodiscard]] int additions() const;
    [[nodiscard]] int deletions() const;
    [[nodiscard]] QString position() const;     ///< Empty while the file is loading.
    [[nodiscard]] QString previousName() const; ///< What the step back leads to.
    [[nodiscard]] QString nextName() const;
    [[nodiscard]] bool hasNothingToShow() const; ///< Loaded without a failure and without hunks.

Q_SIGNALS:
    void changed();

private:
    QPointer<DiffViewModel> m_diff{};
};

} // namespace vantrel
