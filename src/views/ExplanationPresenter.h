#pragma once

#include "app/DiffViewModel.h"
#include "views/FramePacer.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <qqml.h>

namespace vantrel {

/// The explanation of the selected hunk as the sidebar shows it. What streams in is announced at
/// most once a frame. Thread: interface.
class ExplanationPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vantrel::DiffViewModel *diff READ diff WRITE setDiff NOTIFY diffChanged)
    Q_PROPERTY(State state READ state NOTIFY changed)
    Q_PROPERTY(QString tag READ tag NOTIFY changed)
    Q_PROPERTY(QString prose READ prose NOTIFY changed)
    Q_PROPERTY(QStringList points READ points NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QString recoveryLabel READ recoveryLabel NOTIFY changed)

public:
    /// Capitalised, since QML does not see other enumerators.
    enum class State {
        None,      ///< There is no hunk, or it has not been asked for.
        Reading,   ///< Asked for; nothing has come yet.
        Streaming, ///< Prose is coming.
        Loaded,
        Failed,
    };
    Q_ENUM(State)

    using QObject::QObject;

    [[nodiscard]] DiffViewModel *diff() const { return m_diff; }
    void setDiff(DiffViewModel *diff);

    [[nodiscard]] State state() const;
    [[nodiscard]] QString tag() const;
    [[nodiscard]] QString prose() const; ///< What has streamed in so far, or the whole.
    [[nodiscard]] QStringList points() const;
    [[nodiscard]] QString message() const;       ///< Of a failure.
    [[nodiscard]] QString recoveryLabel() const; ///< Empty when the settings cannot mend it.

Q_SIGNALS:
    void diffChanged();
    void changed();

private:
    /// Something of the selected hunk's explanation has changed: prose that grows is announced with
    /// the next frame, everything else at once.
    void announce();
    [[nodiscard]] const Hunk *hunk() const;

    QPointer<DiffViewModel> m_diff{};
    FramePacer m_streamed{[this] { Q_EMIT changed(); }};
};

} // namespace vantrel
