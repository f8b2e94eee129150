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

        name: "ProgramsQuestion"
        content: window

        function ask(): void {
            driver.nameProgram("png -s %f");
            driver.root.openFolder(driver.makeRepository("orchard"));
            screen.expectNamed("Open Anyway");
        }

        function test_itTellsWhatWouldRun(): void {
            ask();

            const question = screen.named("This Repository Runs Programs");
            compare(question.Accessible.role, Accessible.Dialog);
            compare(question.Accessible.description, "To read the changes of “orchard”, git would run these commands, which come with the repository.");
            verify(screen.named("filter.images.clean = png -s %f") !== null);
            compare(driver.allowedCount(), 0);
            compare(driver.root.fileList, null);
        }

        function test_itBeginsOnCancel(): void {
            ask();

            verify(screen.named("Cancel").activeFocus);
        }

        function test_itIsDeclined_data(): var {
            return [
                { tag: "button", go: () => mouseClick(screen.named("Cancel")) },
                { tag: "Return", go: () => keyClick(Qt.Key_Return) },
                { tag: "Space", go: () => keyClick(Qt.Key_Space) },
                { tag: "Escape", go: () => keyClick(Qt.Key_Escape) },
                { tag: "screen reader", go: () => screen.named("Cancel").Accessible.pressAction() }
            ];
        }

        function test_itIsDeclined(data: var): void {
            ask();

            data.go();

            compare(screen.named("Open Anyway"), null);
            compare(driver.allowedCount(), 0);
            compare(driver.root.fileList, null);
            verify(screen.named("Choose Folder…").activeFocus);
        }

        function test_itIsAccepted_data(): var {
            return [
                { tag: "button", go: () => mouseClick(screen.named("Open Anyway")) },
                {
                    tag: "keyboard",
                    go: () => {
                        keyClick(Qt.Key_Tab);
                        keyClick(Qt.Key_Return);
                    }
                },
                { tag: "screen reader", go: () => screen.named("Open Anyway").Accessible.pressAction() }
            ];
        }

        function test_itIsAccepted(data: var): void {
            ask();

            data.go();

            tryVerify(() => driver.root.fileList !== null);
            compare(driver.allowedCount(), 1);
            compare(screen.named("Open Anyway"), null);
        }

        function test_theScreenBelowIsOutOfReachMeanwhile(): void {
            screen.openFiles([3, 1]);
            ask();

            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Left, Qt.AltModifier);
            mouseClick(screen.named("All projects"));
            mouseClick(window, 300, 300);

            compare(driver.root.coordinator.repositoryName, "repo");
            verify(screen.named("Cancel").activeFocus);
        }

        function test_manyCommandsScrollByTheKeyboard(): void {
            driver.nameProgram("echo ".repeat(1000));
            driver.root.openFolder(driver.makeRepository("orchard"));
            screen.expectNamed("Open Anyway");
            const words = screen.all(Accessible.StaticText).find(item => item.text.startsWith("filter.images.clean"));
            const top = words.mapToItem(window, 0, 0).y;

            keyClick(Qt.Key_Down);
            compare(words.mapToItem(window, 0, 0).y, top - Theme.codeLine);
            keyClick(Qt.Key_Up);
            keyClick(Qt.Key_Up);
            compare(words.mapToItem(window, 0, 0).y, top);
            verify(screen.named("Open Anyway").mapToItem(window, 0, 0).y < window.height - Theme.controlSize);
        }

        function test_itWaitsForTheSetup(): void {
            driver.root.setup.open();
            driver.nameProgram("png -s %f");
            driver.root.openFolder(driver.makeRepository("orchard"));
            tryVerify(() => driver.root.picker.isAsking);
            compare(screen.named("Open Anyway"), null);

            driver.root.setup.close();

            screen.expectNamed("Open Anyway");
            verify(screen.named("Cancel").activeFocus);
        }
    }
}
