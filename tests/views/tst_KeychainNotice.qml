import QtQuick
import QtTest
import Vantrel

Item {
    width: 1280
    height: 824

    Loader {
        id: window

        focus: true
    }

    ScreenCase {
        id: screen

        name: "KeychainNotice"
        content: window
        acknowledgesNotice: false

        function test_itsTextsAreTheFixedOnes(): void {
            screen.openFiles([2]);

            const notice = screen.expectNamed("Vantrel Needs Keychain Access");
            compare(notice.Accessible.role, Accessible.Dialog);
            compare(notice.Accessible.description, "Vantrel is about to check your API key in the macOS Keychain. Your Mac may ask for your login password — choose \"Always Allow\" so it won't ask again.");
            verify(screen.named("Continue") !== null);
            compare(driver.summaryCount(), 0);
        }

        function test_whateverDismissesItLetsTheRequestGoOn_data(): var {
            return [
                { tag: "button", go: () => mouseClick(screen.named("Continue")) },
                { tag: "Return", go: () => keyClick(Qt.Key_Return) },
                { tag: "Space", go: () => keyClick(Qt.Key_Space) },
                { tag: "Escape", go: () => keyClick(Qt.Key_Escape) },
                { tag: "screen reader", go: () => screen.named("Continue").Accessible.pressAction() }
            ];
        }

        function test_whateverDismissesItLetsTheRequestGoOn(data: var): void {
            screen.openFiles([2]);
            screen.expectNamed("Continue");

            data.go();

            tryVerify(() => driver.summaryCount() === 1);
            verify(screen.named("Continue") === null);
        }

        function test_theScreenBelowIsOutOfReachMeanwhile(): void {
            screen.openFiles([3, 1]);
            screen.expectNamed("Continue");

            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Left, Qt.AltModifier);
            mouseClick(screen.named("All projects"));
            mouseClick(window, 300, 300);

            verify(driver.root.fileList !== null);
            verify(screen.named("Continue").activeFocus);
        }

        function test_theKeyboardIsBackOnTheListAfterwards(): void {
            screen.openFiles([1, 2]);
            mouseClick(screen.expectNamed("Continue"));

            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);

            screen.expectNamed("Change 1 of 2");
        }
    }
}
