import QtQuick
import QtQuick.Templates as T
import QtTest
import Vantrel

Item {
    id: root

    width: 400
    height: 300

    PrimaryButton {
        id: primary

        text: "Go"
    }

    QuietButton {
        id: iconButton

        y: 60
        display: T.AbstractButton.IconOnly
        iconName: "chevron-up"
        text: "Previous change"
    }

    PathLabel {
        id: path

        y: 100
        width: 120
        folder: "a/very/long/folder/that/cannot/fit/"
        name: "name.cpp"
    }

    CountLabel {
        id: added

        count: 12
        isAddition: true
    }

    CountLabel {
        id: deleted

        count: 7
        isAddition: false
    }

    CountLabel {
        id: none

        count: 0
        isAddition: true
    }

    StatusBadge {
        id: badge

        status: "D"
    }

    ErrorBox {
        id: failure

        width: 200
        message: "A sentence that is so long that it has to be broken into several lines."
        linkText: "Mend it →"
    }

    SignalSpy {
        id: clicks

        target: primary
        signalName: "clicked"
    }

    TestCase {
        readonly property var colourNames: ["window", "surface", "card", "sunken", "line", "lineStrong", "controlBorder", "inkHeading", "ink", "inkSecondary", "inkTertiary", "inkDisabled", "accent", "accentHover", "accentFill", "accentFillHover", "accentFillPressed", "inkOnAccent", "accentSoft", "accentLine", "rowHover", "rowPressed", "rowSelected", "error", "errorSoft", "errorLine", "danger", "inkOnDanger", "note", "noteLine", "noteInk", "success", "focusRing", "selection", "scrollHandle", "scrollHandleHover", "tooltip", "inkOnTooltip", "windowClose", "inkOnWindowClose"]

        name: "Controls"
        when: windowShown

        function init(): void {
            failOnWarning(/.+/);
            Theme.dark = false;
            clicks.clear();
        }

        function textsIn(item: Item): var {
            let texts = item instanceof Text ? [item] : [];
            for (let i = 0; i < item.children.length; ++i) {
                texts = texts.concat(textsIn(item.children[i]));
            }
            return texts;
        }

        function test_aButtonIsPressedByPointerKeyAndScreenReader(): void {
            mouseClick(primary);
            primary.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            primary.Accessible.pressAction();

            compare(clicks.count, 3);
            compare(primary.Accessible.role, Accessible.Button);
            compare(primary.Accessible.name, "Go");
        }

        function test_aDisabledButtonTellsSo(): void {
            primary.enabled = false;
            compare(primary.Accessible.description, "unavailable");

            primary.enabled = true;
            compare(primary.Accessible.description, "");
        }

        function test_aButtonsLabelStandsOutFromItsFill(): void {
            compare(textsIn(primary)[0].color, Theme.inkOnAccent);
            compare(primary.background.color, Theme.accentFill);
        }

        function test_theFocusRingShowsAfterKeyboardUseOnly(): void {
            const ring = primary.background.children[0];

            primary.forceActiveFocus(Qt.MouseFocusReason);
            verify(!ring.visible);
            iconButton.forceActiveFocus();
            primary.forceActiveFocus(Qt.TabFocusReason);
            verify(ring.visible);
        }

        function test_anIconHasItsWordsAsToolTipAndName(): void {
            const tip = findChild(iconButton, "toolTip");
            compare(iconButton.Accessible.name, "Previous change");
            verify(!tip.visible);

            mouseMove(iconButton, 5, 5);

            tryVerify(() => tip.visible);
            compare(tip.text, "Previous change");
            mouseMove(root, 300, 250);
            tryVerify(() => !tip.visible);
        }

        function test_theFolderOfAPathGivesWayFirst(): void {
            const [folder, name] = textsIn(path);

            verify(folder.truncated);
            verify(!name.truncated);
        }

        function test_countsHaveTheirSignAndZeroIsBlank(): void {
            compare(added.text, "+12");
            compare(deleted.text, "−7");
            compare(none.text, "");
        }

        function test_aBadgeHasTheLetterOnItsColour(): void {
            compare(textsIn(badge)[0].text, "D");
            compare(badge.color, Theme.badgeDeleted);
        }

        function test_anErrorBoxIsAsHighAsItsSentenceAndLink(): void {
            const texts = textsIn(failure);

            compare(texts[0].lineCount > 1, true);
            compare(failure.height, texts[0].height + 20 + 2 * 10);
            compare(failure.Accessible.name, failure.message);
        }

        function test_everyColourIsSetInBothThemes(): void {
            for (const dark of [false, true]) {
                Theme.dark = dark;
                for (const name of colourNames) {
                    verify(Theme[name].toString() !== "#000000", name);
                }
            }
        }
    }
}
