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

        name: "PickerScreen"
        content: window

        function test_itsTextsAreTheFixedOnes(): void {
            for (const text of ["Reviewer", "Open a repository to read its working changes.", "Pick any folder containing a .git directory. Every uncommitted file is summarised, and each hunk gets an explanation you can question.", "Choose Folder…"]) {
                verify(screen.named(text) !== null, text);
            }
            compare(screen.all(Accessible.AlertMessage).length, 0);
        }

        function test_theKeyboardIsOnTheButton(): void {
            verify(screen.named("Choose Folder…").activeFocus);
        }

        function test_aFolderWithoutARepositoryIsRefused(): void {
            driver.root.openFolder(Qt.resolvedUrl("."));

            const refusal = screen.expectNamed("That folder doesn't contain a .git directory.");
            compare(refusal.Accessible.role, Accessible.AlertMessage);
        }
    }
}
