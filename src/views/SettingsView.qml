pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// The settings: provider, model and key on one card, the appearance on another.
FocusScope {
    id: root

    required property SettingsViewModel viewModel

    signal setupRequested

    /// The question whether the key is to be removed is open.
    property bool isConfirmingRemoval: false

    function closeRemoval(): void {
        root.isConfirmingRemoval = false;
        saveButton.forceActiveFocus(Qt.TabFocusReason);
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    FocusFollower {
        view: scroll
        content: column
    }

    Flickable {
        id: scroll

        anchors.fill: parent
        boundsBehavior: Flickable.StopAtBounds
        contentWidth: width
        contentHeight: column.height + 2 * column.y

        T.ScrollBar.vertical: ThinScrollBar {}

        Column {
            id: column

            x: Theme.spaceXxl
            y: Theme.spaceXl
            width: scroll.width - 2 * x

            Item {
                width: column.width
                height: Theme.controlCompactSize

                PlainLabel {
                    height: parent.height
                    text: qsTr("AI Settings")
                    font: Theme.headingFont
                    color: Theme.inkHeading
                    Accessible.role: Accessible.Heading
                }
                SecondaryButton {
                    anchors.right: parent.right
                    height: parent.height
                    text: qsTr("Run Setup…")
                    onClicked: root.setupRequested()
                }
            }
            Item {
                width: 1
                height: Theme.spaceM
            }
            SettingsCard {
                width: column.width

                FormRow {
                    width: parent.width
                    label: providers.label

                    SegmentedControl {
                        id: providers

                        focus: true
                        label: qsTr("Provider")
                        options: root.viewModel.providerNames
                        currentIndex: root.viewModel.providerIndex
                        onChosen: index => root.viewModel.chooseProvider(index)
                    }
                }
                FormRow {
                    width: parent.width
                    visible: root.viewModel.isBaseURLShown
                    label: baseURLField.label

                    TextField {
                        id: baseURLField

                        width: parent.width
                        label: qsTr("Base URL")
                        placeholderText: qsTr("https://…")
                        value: root.viewModel.baseURL
                        isRefused: root.viewModel.isBaseURLRefused
                        inputMethodHints: Qt.ImhUrlCharactersOnly
                        onEdited: text => root.viewModel.baseURL = text
                        onAccepted: root.viewModel.save()
                    }
                }
                FormRow {
                    width: parent.width
                    label: qsTr("Model")

                    ModelPickerField {
                        width: parent.width
                        providerIndex: root.viewModel.providerIndex
                        model: root.viewModel.model
                        isUsingCustomModel: root.viewModel.isUsingCustomModel
                        isRefused: root.viewModel.isModelRefused
                        onPresetChosen: id => root.viewModel.selectPreset(id)
                        onCustomChosen: text => root.viewModel.selectCustomModel(text)
                        onEdited: text => root.viewModel.model = text
                        onAccepted: root.viewModel.save()
                    }
                }
                FormRow {
                    width: parent.width
                    label: keyField.label

                    PasswordField {
                        id: keyField

                        width: parent.width
                        label: qsTr("API key")
                        placeholderText: root.viewModel.hasSavedKey ? qsTr("Enter a new key to replace the saved one") : ""
                        value: root.viewModel.apiKeyDraft
                        isRefused: root.viewModel.isKeyRefused
                        onEdited: text => root.viewModel.apiKeyDraft = text
                        onAccepted: root.viewModel.save()
                    }
                    Item {
                        width: 1
                        height: Theme.bulletSize
                    }
                    KeyStateLabel {
                        width: parent.width
                        isKnown: root.viewModel.isKeyStateKnown
                        hasSavedKey: root.viewModel.hasSavedKey
                        providerName: root.viewModel.providerName
                    }
                    Item {
                        width: 1
                        height: Theme.spaceXs
                    }
                    PlainLabel {
                        width: parent.width
                        text: qsTr("Stored securely in the macOS Keychain — saving may ask for your login password.")
                        font: Theme.smallFont
                        line: Theme.smallLine
                        color: Theme.inkSecondary
                        wrapMode: Text.Wrap
                        elide: Text.ElideNone
                    }
                    Item {
                        width: 1
                        height: Theme.spaceXl
                    }
                    Row {
                        spacing: Theme.spaceS

                        PrimaryButton {
                            id: saveButton

                            text: qsTr("Save")
                            enabled: !root.viewModel.isChangingKey
                            onClicked: root.viewModel.save()
                        }
                        DestructiveButton {
                            text: qsTr("Remove")
                            visible: root.viewModel.hasSavedKey
                            enabled: !root.viewModel.isChangingKey
                            onClicked: root.isConfirmingRemoval = true
                        }
                        SettingsStatus {
                            leftPadding: Theme.spaceS
                            isBusy: root.viewModel.isChangingKey
                            message: root.viewModel.statusIsError ? "" : root.viewModel.statusMessage
                        }
                    }
                    Item {
                        width: 1
                        height: Theme.spaceM
                        visible: failure.visible
                    }
                    ErrorBox {
                        id: failure

                        width: parent.width
                        visible: root.viewModel.statusIsError
                        message: root.viewModel.statusIsError ? root.viewModel.statusMessage : ""
                    }
                }
            }
            Item {
                width: 1
                height: Theme.spaceXxl
            }
            PlainLabel {
                line: Theme.headingLine
                text: qsTr("Appearance")
                font: Theme.headingFont
                color: Theme.inkHeading
                Accessible.role: Accessible.Heading
            }
            Item {
                width: 1
                height: Theme.spaceM
            }
            SettingsCard {
                width: column.width

                FormRow {
                    width: parent.width
                    label: themes.label

                    SegmentedControl {
                        id: themes

                        label: qsTr("Theme")
                        options: [qsTr("System"), qsTr("Light"), qsTr("Dark")]
                        currentIndex: root.viewModel.appearanceIndex
                        onChosen: index => root.viewModel.chooseAppearance(index)
                    }
                }
            }
        }
    }

    AlertDialog {
        anchors.fill: parent
        visible: root.isConfirmingRemoval
        title: qsTr("Remove the saved API key for %1?").arg(root.viewModel.providerName)
        acceptLabel: qsTr("Remove")
        cancelLabel: qsTr("Cancel")
        isDestructive: true
        onAccepted: {
            root.closeRemoval();
            root.viewModel.removeKey();
        }
        onCancelled: root.closeRemoval()
        onEscaped: root.closeRemoval()
    }

    AlertDialog {
        anchors.fill: parent
        visible: root.viewModel.isShowingKeychainNotice
        iconName: "key"
        title: qsTr("Your API Key Is Stored in the Keychain")
        message: qsTr("Vantrel stores your API key in the macOS Keychain, Apple's encrypted credential store. Your Mac may ask for your login password to allow this — that's normal and only needed once.")
        acceptLabel: qsTr("Continue")
        onAccepted: {
            root.viewModel.confirmKeychainNotice();
            saveButton.forceActiveFocus();
        }
    }

    KeychainNotice {
        id: startupNotice

        anchors.fill: parent
        notice: root.viewModel.keychainAccessNotice
    }

    // It may also be read in the main window.
    Connections {
        function onIsShowingNoticeChanged(): void {
            if (!startupNotice.visible) {
                providers.forceActiveFocus();
            }
        }

        target: root.viewModel.keychainAccessNotice
    }
}
