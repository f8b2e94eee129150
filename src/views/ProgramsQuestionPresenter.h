#pragma once

#include "app/PickerViewModel.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <qqml.h>

#include <optional>

namespace vantrel {

/// The words of the question before a repository is opened that makes git run programs. Nothing of
/// them can pass for something else: characters that are invisible or that would reorder the text
/// stand there as marks. Thread: interface.
class ProgramsQuestionPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vantrel::PickerViewModel *picker READ picker WRITE setPicker NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QString commands READ commands NOTIFY changed)

public:
    using QObject::QObject;

    [[nodiscard]] PickerViewModel *picker() const { return m_picker; }
    void setPicker(PickerViewModel *picker);

    /// Both are empty while nothing is asked.
    [[nodiscard]] QString message() const;
    [[nodiscard]] QString commands() const; ///< One in each line, behind what it is configured as.

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] std::optional<PickerViewModel::Question> question() const;

    QPointer<PickerViewModel> m_picker{};
};

} // namespace vantrel
