import QtQuick
import QtTest
import Vantrel

Item {
    id: root

    width: 500
    height: 500

    TextField {
        id: textField

        width: 200
        label: "Base URL"
        placeholderText: "https://…"
    }

    PasswordField {
        id: passwordField

        y: 50
        width: 200
        label: "API key"
        placeholderText: "Enter a new key"
    }

    SegmentedControl {
        id: segments

        y: 100
        label: "Theme"
        options: ["System", "Light", "Dark"]
        currentIndex: 0
        onChosen: index => currentIndex = index
    }

    ListModel {
        id: rows

        ListElement {
            name: "Plum"
            note: "Sweet."
        }
        ListElement {
            name: "Quince"
            note: "Sour."
        }
        ListElement {
            name: "Another…"
            note: ""
        }
    }

    ComboBox {
        id: box

        y: 150
        width: 200
        label: "Fruit"
        model: rows
        displayText: rows.get(currentIndex).name
    }

    FormRow {
        id: row

        y: 200
        width: 300
        label: "Name"

        Rectangle {
            width: 100
            height: 70
        }
    }

    SettingsStatus {
        id: status

        y: 300
        isBusy: false
        message: ""
    }

    DestructiveButton {
        id: destructive

        y: 350
        text: "Remove"
    }

    AlertDialog {
        id: alert

        anchors.fill: parent
        visible: false
        title: "A question that is so long that it has to be broken into more lines than one?"
        acceptLabel: "Do it"
    }

    SignalSpy {
        id: edits

        target: textField
        signalName: "edited"
    }

    SignalSpy {
        id: passwordEdits

        target: passwordField
        signalName: "edited"
    }

    SignalSpy {
        id: activations

        target: box
        signalName: "activated"
    }

    TestCase {
        name: "SettingsControls"
        when: windowShown

        function init(): void {
            failOnWarning(/.+/);
            Theme.dark = false;
            Theme.reducesMotion = true;
            root.forceActiveFocus();
            mouseMove(root, 490, 490);
            textField.value = "";
            textField.text = "";
            textField.enabled = true;
            textField.isRefused = false;
            passwordField.value = "";
            passwordField.enabled = true;
            passwordField.isShown = false;
            segments.currentIndex = 0;
            segments.enabled = true;
            box.currentIndex = 0;
            box.enabled = true;
            status.isBusy = false;
            status.message = "";
            alert.visible = false;
            alert.message = "";
            alert.iconName = "";
            alert.cancelLabel = "";
            alert.isDestructive = false;
            edits.clear();
            passwordEdits.clear();
            activations.clear();
        }

        function labelsIn(item: Item): var {
            let labels = item instanceof Text && item.visible ? [item] : [];
            for (let i = 0; i < item.children.length; ++i) {
                labels = labels.concat(labelsIn(item.children[i]));
            }
            return labels;
        }

        function textsIn(item: Item): var {
            return labelsIn(item).map(label => label.text).filter(text => text !== "");
        }

        function secretInput(): Item {
            return passwordField.children[1].children[0];
        }

        /// The control that has the keyboard, and the row of segments.
        function segment(index: int): Item {
            return segments.children[1].children[index];
        }

        function segmentFill(index: int): Rectangle {
            return segment(index).children[1].background;
        }

        function test_aFieldHasALookForEachState(): void {
            const frame = textField.background;
            compare(frame.border.color, Theme.controlBorder);
            compare(frame.border.width, 1);
            compare(frame.color, Theme.card);

            textField.forceActiveFocus();
            compare(frame.border.color, Theme.focusRing);
            compare(frame.border.width, 2);

            textField.isRefused = true;
            compare(frame.border.color, Theme.error);

            textField.enabled = false;
            compare(frame.border.color, Theme.line);
            compare(frame.color, Theme.sunken);
        }

        function test_aFieldTellsWhatIsTypedAndShowsWhatItIsGiven(): void {
            textField.forceActiveFocus();
            keyClick("a");
            keyClick("b");
            compare(edits.signalArguments.map(args => args[0]), ["a", "ab"]);

            textField.value = "given";
            compare(textField.text, "given");
            compare(edits.count, 2);
        }

        function test_aPlaceholderShowsInAnEmptyField(): void {
            compare(textsIn(textField), ["https://…"]);
            compare(textField.Accessible.name, "Base URL");
            compare(textField.Accessible.description, "https://…");

            textField.value = "x";
            compare(textsIn(textField), []);
        }

        function test_aFieldTakesTenThousandCharacters(): void {
            const text = "m".repeat(10000);

            textField.value = text;

            compare(textField.text, text);
        }

        function test_aPasswordIsHiddenUntilTheEyeShowsIt(): void {
            const eye = passwordField.children[2];
            passwordField.value = "secret";
            compare(secretInput().displayText, "●●●●●●".replace(/●/g, secretInput().passwordCharacter));
            compare(eye.Accessible.name, "Show key");
            compare(eye.Accessible.checked, false);

            mouseClick(eye);
            compare(secretInput().displayText, "secret");
            compare(eye.Accessible.name, "Hide key");
            compare(eye.Accessible.checked, true);

            eye.Accessible.toggleAction();
            verify(secretInput().displayText !== "secret");
        }

        function test_anEmptiedPasswordFieldHidesTheNextOne(): void {
            passwordField.value = "secret";
            passwordField.isShown = true;

            passwordField.value = "";

            compare(passwordField.isShown, false);
        }

        function test_aPasswordFieldStandsForItsInput(): void {
            const stand = passwordField.children[1];
            compare(stand.Accessible.role, Accessible.EditableText);
            compare(stand.Accessible.passwordEdit, true);
            compare(stand.Accessible.description, "API key");
            compare(passwordField.Accessible.role, Accessible.Grouping);
            compare(passwordField.Accessible.name, "API key");
            compare(passwordField.Accessible.description, "Enter a new key");
            compare(secretInput().Accessible.ignored, true);

            passwordField.forceActiveFocus();
            keyClick("s");
            compare(passwordEdits.signalArguments.map(args => args[0]), ["s"]);
            compare(stand.Accessible.focused, true);
        }

        function test_aPasswordFieldHasTheLookOfAField(): void {
            compare(passwordField.children[0].border.color, Theme.controlBorder);
            passwordField.forceActiveFocus();
            compare(passwordField.children[0].border.color, Theme.focusRing);
            passwordField.isRefused = true;
            compare(passwordField.children[0].border.color, Theme.error);
            passwordField.isRefused = false;
            passwordField.enabled = false;
            compare(passwordField.children[0].color, Theme.sunken);
        }

        function test_theChosenSegmentIsBoldAndNothingMoves(): void {
            const widths = [0, 1, 2].map(index => segment(index).width);
            compare(segmentFill(0).color, Theme.card);
            compare(segmentFill(0).border.color, Theme.lineStrong);
            compare(labelsIn(segment(0))[0].font.weight, Theme.bodyBoldFont.weight);

            mouseClick(segment(2));

            compare(segments.currentIndex, 2);
            compare([0, 1, 2].map(index => segment(index).width), widths);
            compare(labelsIn(segment(0))[0].font.weight, Font.Normal);
            for (const index of [0, 1, 2]) {
                verify(!labelsIn(segment(index))[0].truncated);
            }
        }

        function test_aSegmentUnderThePointerIsFilled(): void {
            mouseMove(segment(1), 5, 5);
            tryCompare(segmentFill(1), "color", Theme.rowPressed);

            mouseMove(root, 490, 490);
            tryVerify(() => segmentFill(1).color.a === 0);
        }

        function test_segmentsHaveOneRingAfterKeyboardUse(): void {
            const ring = segments.children[0].background.children[0];
            mouseClick(segment(1));
            verify(segments.activeFocus);
            verify(!ring.visible);

            root.forceActiveFocus();
            segments.forceActiveFocus(Qt.TabFocusReason);
            verify(ring.visible);
            keyClick(Qt.Key_Right);
            compare(segments.currentIndex, 2);
        }

        function test_disabledSegmentsCannotBeChosen(): void {
            segments.enabled = false;

            mouseClick(segment(1));

            compare(segments.currentIndex, 0);
            compare(labelsIn(segment(1))[0].color, Theme.inkDisabled);
        }

        function test_aComboBoxOpensAndCloses(): void {
            mouseClick(box);
            tryVerify(() => box.popup.opened);
            compare(box.background.border.color, Theme.focusRing);
            const list = box.popup.contentItem;
            compare(list.count, 3);
            compare(list.itemAtIndex(0).height, 46);
            compare(list.itemAtIndex(2).height, 30 + 9);
            compare(textsIn(list.itemAtIndex(1)), ["Quince", "Sour."]);

            // What has just opened meets the pointer with its first frame.
            const quince = list.itemAtIndex(1);
            tryVerify(() => {
                mouseMove(quince, 5, quince.hovered ? 5 : 6);
                return quince.hovered;
            });
            mouseClick(quince);

            compare(activations.signalArguments.map(args => args[0]), [1]);
            tryVerify(() => !box.popup.visible);
            compare(textsIn(box.contentItem), ["Quince"]);
        }

        function test_aComboBoxMarksItsChoiceAndTheRowOfTheKeyboard(): void {
            box.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            tryVerify(() => box.popup.opened);
            const list = box.popup.contentItem;
            const fill = index => list.itemAtIndex(index).background.children[1].color;
            compare(fill(0), Theme.accentSoft);

            keyClick(Qt.Key_Down);
            compare(fill(1), Theme.rowHover);
            keyClick(Qt.Key_Escape);

            tryVerify(() => !box.popup.visible);
            compare(activations.count, 0);
            compare(box.currentIndex, 0);
        }

        function test_aDisabledComboBoxDoesNotOpen(): void {
            box.enabled = false;

            mouseClick(box);

            verify(!box.popup.visible);
            compare(box.background.color, Theme.sunken);
            compare(box.contentItem.color, Theme.inkDisabled);
        }

        function test_aFormRowHasItsLabelBesideTheFirstLine(): void {
            compare(row.implicitHeight, 70);
            compare(labelsIn(row)[0].height, 32);
            compare(labelsIn(row)[0].width, 64);
            compare(row.children[1].x, 80);
            compare(row.children[1].width, 220);
        }

        function test_aStatusIsDotsOrWords(): void {
            compare(textsIn(status), []);

            status.message = "Saved.";
            compare(textsIn(status), ["Saved."]);

            status.isBusy = true;
            compare(textsIn(status), []);
            verify(status.children[0].visible);
        }

        function test_aDestructiveButtonHasTheErrorInk(): void {
            compare(labelsIn(destructive)[0].color, Theme.error);
            compare(destructive.background.color, Theme.card);
        }

        function test_anAlertHasOnlyWhatItIsGiven(): void {
            alert.visible = true;
            compare(textsIn(alert), [alert.title, "Do it"]);

            alert.message = "Because.";
            alert.cancelLabel = "Leave it";
            alert.iconName = "key";
            compare(textsIn(alert), [alert.title, "Because.", "Leave it", "Do it"]);
        }

        function test_anAlertStaysInALowWindow(): void {
            root.height = 150;
            alert.visible = true;
            const card = labelsIn(alert)[0].parent.parent;

            verify(card.y >= 0);
            root.height = 500;
        }

        function test_theKeyboardBeginsOnTheHarmlessWayOut(): void {
            alert.cancelLabel = "Leave it";
            alert.isDestructive = true;

            alert.visible = true;

            verify(alert.firstButton.activeFocus);
            compare(alert.firstButton.text, "Leave it");
            verify(alert.firstButton.visualFocus);
            keyClick(Qt.Key_Tab);
            verify(!alert.firstButton.activeFocus);
            keyClick(Qt.Key_Tab);
            verify(alert.firstButton.activeFocus);
        }
    }
}
