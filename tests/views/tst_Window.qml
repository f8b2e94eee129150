import QtQuick
import QtTest
import Vantrel

Item {
    id: root

    width: 1280
    height: 824

    Loader {
        id: window

        focus: true
    }

    SignalSpy {
        id: settings

        target: window.item
        signalName: "settingsRequested"
    }

    SignalSpy {
        id: shortcuts

        target: window.item
        signalName: "shortcutsRequested"
    }

    ScreenCase {
        id: screen

        name: "Window"
        content: window

        function test_theTitleBarNamesTheRepositoryAndItsBranch(): void {
            screen.openFiles([1]);

            const bar = screen.all(Accessible.TitleBar)[0];
            compare(bar.Accessible.name, "Reviewer, repo, main");
        }

        function test_theBranchOfARepositoryThatWasLeftIsNotShown(): void {
            screen.openFiles([1]);

            mouseClick(screen.named("All projects"));

            tryCompare(screen.all(Accessible.TitleBar)[0].Accessible, "name", "Reviewer");
        }

        function test_theButtonsOfTheWindowAreNamed(): void {
            for (const name of ["Menu", "Minimise", "Maximise", "Close"]) {
                compare(screen.named(name).Accessible.role, Accessible.Button, name);
            }
        }

        function test_theKeyboardComesToTheTitleBarLast(): void {
            keyClick(Qt.Key_Tab);
            verify(screen.named("Menu").activeFocus);
            keyClick(Qt.Key_Tab);
            verify(screen.named("Minimise").activeFocus);
            keyClick(Qt.Key_Tab);
            verify(screen.named("Maximise").activeFocus);
            keyClick(Qt.Key_Tab);
            verify(screen.named("Close").activeFocus);
            keyClick(Qt.Key_Tab);
            verify(screen.named("Choose Folder…").activeFocus);
        }

        function test_theMenuOpensByPointerAndByKey_data(): var {
            return [
                { tag: "pointer", open: () => mouseClick(screen.named("Menu")) },
                { tag: "F10", open: () => keyClick(Qt.Key_F10) }
            ];
        }

        function test_theMenuOpensByPointerAndByKey(data: var): void {
            data.open();
            tryVerify(() => screen.menuEntry("Settings…") !== null);
            for (const name of ["Choose Folder…", "Settings…", "Keyboard Shortcuts", "Quit Vantrel"]) {
                verify(screen.menuEntry(name) !== null, name);
            }

            keyClick(Qt.Key_Escape);
            tryVerify(() => screen.menuEntry("Settings…") === null);
        }

        function test_theMenuIsUsedByKeys(): void {
            settings.clear();
            screen.openMenu();

            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);

            compare(settings.count, 1);
            tryVerify(() => screen.menuEntry("Settings…") === null);
        }

        function test_aScreenReaderCanPressAnEntry(): void {
            shortcuts.clear();
            screen.openMenu();

            screen.menuEntry("Keyboard Shortcuts").Accessible.pressAction();

            compare(shortcuts.count, 1);
            tryVerify(() => screen.menuEntry("Settings…") === null);
        }

        function test_keysLeadToTheSettingsAndTheShortcuts(): void {
            settings.clear();
            shortcuts.clear();

            keyClick(Qt.Key_Comma, Qt.ControlModifier);
            keyClick(Qt.Key_F1);

            compare(settings.count, 1);
            compare(shortcuts.count, 1);
        }

        function test_aFailedSummaryLeadsToTheSettings(): void {
            settings.clear();
            screen.openFiles([1, 1]);
            driver.failSummaryForMissingKey();
            const link = screen.expectNamed("Add an API key in Settings →");
            compare(link.Accessible.role, Accessible.Link);

            mouseClick(link);
            compare(settings.count, 1);
            compare(driver.root.diff, null);
        }

        function test_aFailedSummarysLinkIsATabStop(): void {
            settings.clear();
            screen.openFiles([1]);
            driver.failSummaryForMissingKey();
            const link = screen.expectNamed("Add an API key in Settings →");

            keyClick(Qt.Key_Tab);
            verify(link.activeFocus);
            keyClick(Qt.Key_Return);

            compare(settings.count, 1);
            compare(driver.root.diff, null);
        }

        function test_aFailedExplanationLeadsToTheSettings(): void {
            settings.clear();
            screen.openDiff([1]);
            tryVerify(() => driver.explanationCount() > 0);
            driver.failForMissingKey();

            mouseClick(screen.expectNamed("Add an API key in Settings →"));

            compare(settings.count, 1);
        }

        function test_aDroppedFolderIsOpenedOnEveryScreen_data(): var {
            return [
                { tag: "picker", show: () => {} },
                { tag: "list", show: () => screen.openFiles([1]) },
                { tag: "diff", show: () => screen.openDiff([1]) }
            ];
        }

        function test_aDroppedFolderIsOpenedOnEveryScreen(data: var): void {
            data.show();
            const folder = driver.makeRepository("meadow");

            verify(driver.dragOver(window, [folder]));
            verify(screen.named("Drop the folder to open it") !== null);
            verify(driver.dropOn(window, [folder]));

            tryCompare(driver.root.coordinator, "repositoryName", "meadow");
            tryVerify(() => screen.named("Drop the folder to open it") === null);
        }

        function test_aFolderThatIsDraggedAwayIsNotOpened(): void {
            driver.dragOver(window, [driver.makeRepository("meadow")]);
            driver.dragAway(window);

            tryVerify(() => screen.named("Drop the folder to open it") === null);
            compare(driver.root.coordinator.repositoryName, "");
        }

        function test_whatIsNoFileIsNotTaken(): void {
            verify(!driver.dragOver(window, []));
            compare(screen.named("Drop the folder to open it"), null);
        }

        function test_aRefusedFolderIsToldOnEveryScreenAndCanBePutAway(): void {
            const sentence = "That folder doesn't contain a .git directory.";
            screen.openFiles([1]);

            driver.root.openFolder(driver.makeFolder("meadow"));
            const box = screen.expectNamed(sentence);
            compare(box.Accessible.role, Accessible.AlertMessage);
            compare(driver.root.coordinator.repositoryName, "repo");
            mouseClick(screen.named("Dismiss"));
            compare(screen.named(sentence), null);

            driver.root.openFolder(driver.makeFolder("field"));
            screen.expectNamed(sentence);
        }
    }
}
