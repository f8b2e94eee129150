pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The question before a repository is opened that makes git run programs, over everything else.
AlertDialog {
    id: root

    required property PickerViewModel picker

    iconName: "warning"
    title: qsTr("This Repository Runs Programs")
    message: presenter.message
    commands: presenter.commands
    acceptLabel: qsTr("Open Anyway")
    cancelLabel: qsTr("Cancel")
    isDestructive: true
    onAccepted: root.picker.openAnyway()
    onCancelled: root.picker.cancelOpening()
    onEscaped: root.picker.cancelOpening()

    ProgramsQuestionPresenter {
        id: presenter

        picker: root.picker
    }
}
