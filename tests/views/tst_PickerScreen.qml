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
            for (const text of ["Reviewer", "Open a repository to read its working changes.", "Pick any folder containing a .git directory. Every uncommitted file is summarised, and each hunk gets an explanation you can question.", "Choose Folder…", "or drop a folder anywhere in the window"]) {
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

        function test_withoutRecentRepositoriesThereIsNoList(): void {
            compare(screen.named("Recent"), null);
            compare(screen.all(Accessible.ListItem).length, 0);
        }

        function test_recentRepositoriesAreListedNewestFirst(): void {
            driver.addRecentRepository("orchard");
            driver.addRecentRepository("meadow");
            screen.expectNamed("orchard");

            const rows = screen.all(Accessible.ListItem);
            compare(rows.map(row => row.Accessible.name), ["meadow", "orchard"]);
            verify(rows[0].Accessible.description.includes("/meadow, "));
            compare(screen.all(Accessible.List)[0].Accessible.name, "Recent");
        }

        function test_aRecentRepositoryTellsWhenItWasOpened(): void {
            driver.addRecentRepository("orchard");
            const row = screen.expectNamed("orchard");

            verify(/, Today, \d\d:\d\d$/.test(row.Accessible.description), row.Accessible.description);
        }

        function test_aRecentRepositoryThatIsGoneIsShownAsSuchAndRefused(): void {
            driver.addMissingRepository("orchard");
            const row = screen.expectNamed("orchard");
            tryVerify(() => row.Accessible.description.endsWith(", Folder not found"));

            mouseClick(row);

            screen.expectNamed("That folder doesn't contain a .git directory.");
            verify(screen.named("orchard") !== null);
        }

        function test_theKeyboardIsOnTheNewestRecentRepository(): void {
            driver.addRecentRepository("orchard");
            screen.expectNamed("orchard");

            verify(screen.all(Accessible.List)[0].activeFocus);
            verify(screen.all(Accessible.ListItem)[0].isCurrent);
        }

        function test_tabGoesFromTheButtonToTheListAndBack(): void {
            driver.addRecentRepository("orchard");
            screen.expectNamed("orchard");
            const list = screen.all(Accessible.List)[0];

            keyClick(Qt.Key_Backtab);
            verify(screen.named("Choose Folder…").activeFocus);
            keyClick(Qt.Key_Tab);
            verify(list.activeFocus);
        }

        function test_aRecentRepositoryOpens_data(): var {
            return [
                { tag: "click", open: () => mouseClick(screen.all(Accessible.ListItem)[1]) },
                {
                    tag: "Down and Return",
                    open: () => {
                        keyClick(Qt.Key_Down);
                        keyClick(Qt.Key_Return);
                    }
                },
                {
                    tag: "End and Enter",
                    open: () => {
                        keyClick(Qt.Key_End);
                        keyClick(Qt.Key_Enter);
                    }
                },
                {
                    tag: "End, Home, Down and Return",
                    open: () => {
                        keyClick(Qt.Key_End);
                        keyClick(Qt.Key_Home);
                        keyClick(Qt.Key_Down);
                        keyClick(Qt.Key_Return);
                    }
                },
                { tag: "screen reader", open: () => screen.all(Accessible.ListItem)[1].opened() }
            ];
        }

        function test_aRecentRepositoryOpens(data): void {
            for (const name of ["older", "orchard", "meadow"].slice(data.tag.startsWith("End and") ? 1 : 0)) {
                driver.addRecentRepository(name);
            }
            screen.expectNamed("orchard");

            data.open();

            tryVerify(() => driver.root.fileList !== null);
            compare(driver.root.coordinator.repositoryName, "orchard");
        }

        function test_anOpenedRepositoryIsTheNewestWhenThePickerIsShownAgain(): void {
            driver.addRecentRepository("orchard");
            driver.addRecentRepository("meadow");
            mouseClick(screen.expectNamed("orchard"));
            tryVerify(() => driver.root.fileList !== null);

            driver.root.fileList.goBack();

            screen.expectNamed("orchard");
            compare(screen.all(Accessible.ListItem).map(row => row.Accessible.name), ["orchard", "meadow"]);
            verify(screen.all(Accessible.List)[0].activeFocus);
        }

        function test_aRecentRepositoryThatIsGoneIsRefused(): void {
            driver.addRecentRepository("orchard");
            screen.expectNamed("orchard");
            driver.removeRepositories();

            keyClick(Qt.Key_Return);

            screen.expectNamed("That folder doesn't contain a .git directory.");
            verify(screen.named("orchard") !== null);
        }

        function test_tenRecentRepositoriesFitIntoTheSmallestWindow(): void {
            window.width = 900;
            window.height = 600;
            for (let i = 0; i < 10; ++i) {
                driver.addRecentRepository("repo" + i);
            }
            screen.expectNamed("repo9");
            const list = screen.all(Accessible.List)[0];

            keyClick(Qt.Key_End);

            const last = screen.expectNamed("repo0");
            tryVerify(() => last.mapToItem(window, 0, last.height).y <= window.height);
            verify(last.mapToItem(window, last.width, 0).x <= window.width);
            verify(list.y + list.height < window.height);
        }
    }
}
