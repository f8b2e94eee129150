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

        function list(): ListView {
            return screen.all(Accessible.List)[0];
        }

        name: "FileListScreen"
        content: window

        function test_eachFileIsARowThatIsReadOutInFull(): void {
            screen.openFiles([4, 1]);

            verify(screen.named("src/file0.cpp, Modified, 4 lines added, 4 lines deleted") !== null);
            verify(screen.named("src/file1.cpp, Modified, 1 line added, 1 line deleted") !== null);
            verify(screen.named("2 files") !== null);
            verify(screen.named("+5") !== null);
            verify(screen.named("−5") !== null);
        }

        function test_oneFileIsNotCalledFiles(): void {
            screen.openFiles([2]);

            verify(screen.named("1 file") !== null);
        }

        function test_theTitleBarNamesRepositoryAndBranch(): void {
            screen.openFiles([1]);

            screen.expectNamed("Reviewer, repo, main");
        }

        function test_aFileWithoutHunksSaysSo(): void {
            screen.openFiles([0]);

            const row = screen.named("src/file0.cpp, Modified");
            verify(row !== null);
            let text = "";
            screen.walk(row, item => text += item.text ?? "");
            verify(text.includes("No text changes"), text);
        }

        function test_aRowShowsItsSummaryOnceItIsThere(): void {
            screen.openFiles([1, 0, 1]);
            tryVerify(() => driver.summaryCount() === 1);
            const row = screen.named("src/file0.cpp, Modified, 1 line added, 1 line deleted");
            compare(row.Accessible.description, "Summarising");

            driver.answerSummary("Keeps the last plum.");

            tryVerify(() => row.Accessible.description === "Keeps the last plum.");
            tryVerify(() => driver.summaryCount() === 2, 5000, "the next file's");
        }

        function test_aSummaryThatFailedSaysWhyAndWhatHelps(): void {
            screen.openFiles([1]);
            tryVerify(() => driver.summaryCount() === 1);

            driver.failSummaryForMissingKey();

            const row = screen.named("src/file0.cpp, Modified, 1 line added, 1 line deleted");
            tryVerify(() => row.Accessible.description === "Add an API key in Settings to use AI features.");
            let text = "";
            screen.walk(row, item => text += item.text ?? "");
            verify(text.includes("Add an API key in Settings →"), text);
        }

        function test_theFullPictureHasAPlaceholderAndThenItsText(): void {
            driver.askForNarrative();
            screen.openFiles([1]);
            screen.expectNamed("Reading all changes…");
            tryVerify(() => driver.summaryCount() === 1);
            driver.answerSummary("Keeps the last plum.");

            tryVerify(() => driver.narrativeCount() === 1);
            driver.answerNarrative("The orchard gets a second gate.");

            screen.expectNamed("The orchard gets a second gate.");
            verify(screen.named("Reading all changes…") === null);
            verify(screen.named("1 modified") !== null);
        }

        function test_withoutAFullPictureThereIsNoCard(): void {
            screen.openFiles([1]);

            verify(screen.named("Full picture") === null);
        }

        function test_theRowsStayWhereTheyAreWhenTheFullPictureComes(): void {
            driver.askForNarrative();
            screen.openFiles(Array(60).fill(0).concat([1]));
            const list = screen.list();
            list.contentY = 1000;

            tryVerify(() => driver.narrativeCount() === 1);
            driver.answerNarrative("word ".repeat(200));
            tryVerify(() => driver.root.fileList.narrative !== "");

            compare(list.contentY, 1000);
        }

        function test_aSlowListingShowsRowsThatStandForFiles(): void {
            driver.openRepository();

            screen.expectNamed("Reading changes…");
            const skeleton = findChild(window, "skeleton");
            verify(!skeleton.visible);
            tryVerify(() => skeleton.visible);

            driver.answerFiles([1]);
            tryVerify(() => !skeleton.visible);
            tryVerify(() => screen.named("Reading changes…") === null);
        }

        function test_aCleanRepositorySaysSo(): void {
            screen.openFiles([]);

            screen.expectNamed("No changes");
            verify(screen.named("Everything in this repository is committed. Changed files appear here.") !== null);
        }

        function test_aFailureIsShownAndCanBeTriedAgain(): void {
            driver.openRepository();
            driver.failListing("fatal: broken");

            const box = screen.expectNamed("Couldn't read git status: fatal: broken");
            compare(box.Accessible.role, Accessible.AlertMessage);

            mouseClick(screen.named("Try Again"));
            driver.answerFiles([1]);
            tryVerify(() => screen.all(Accessible.ListItem).length === 1);
            tryVerify(() => screen.named("Couldn't read git status: fatal: broken") === null);
        }

        function test_keysMoveThroughTheList_data(): var {
            return [
                { tag: "Down", keys: [Qt.Key_Down], row: 1 },
                { tag: "j j k", keys: [Qt.Key_J, Qt.Key_J, Qt.Key_K], row: 1 },
                { tag: "Up at the top", keys: [Qt.Key_Up], row: 0 },
                { tag: "End", keys: [Qt.Key_End], row: 39 },
                { tag: "Down at the end", keys: [Qt.Key_End, Qt.Key_Down], row: 39 },
                { tag: "End, Home", keys: [Qt.Key_End, Qt.Key_Home], row: 0 },
                { tag: "Page Down", keys: [Qt.Key_PageDown], row: 12 },
                { tag: "Page Down, Page Up", keys: [Qt.Key_PageDown, Qt.Key_PageUp], row: 0 }
            ];
        }

        function test_keysMoveThroughTheList(data: var): void {
            screen.openFiles(Array(40).fill(1));

            for (const key of data.keys) {
                keyClick(key);
            }

            compare(screen.list().currentIndex, data.row);
            const top = screen.list().currentItem.mapToItem(window, 0, 0).y;
            verify(top >= 88 && top + 56 <= window.height, "at " + top);
        }

        function test_theHeadingComesBackWithTheFirstRow(): void {
            screen.openFiles(Array(40).fill(1));
            const heading = screen.all(Accessible.Heading)[0];

            keyClick(Qt.Key_End);
            verify(heading.mapToItem(window, 0, 0).y < 88);

            keyClick(Qt.Key_Home);
            compare(heading.mapToItem(window, 0, 0).y, 112);
        }

        function test_keysAndClicksOpenAFile_data(): var {
            return [
                { tag: "Return", open: () => keyClick(Qt.Key_Return) },
                { tag: "Right", open: () => keyClick(Qt.Key_Right) },
                { tag: "click", open: () => mouseClick(screen.all(Accessible.ListItem)[0]) },
                { tag: "screen reader", open: () => screen.all(Accessible.ListItem)[0].Accessible.pressAction() }
            ];
        }

        function test_keysAndClicksOpenAFile(data: var): void {
            screen.openFiles([3, 1]);

            data.open();

            screen.expectNamed("Change 1 of 3");
        }

        function test_theKeyboardReturnsToTheFileThatWasShownLast(): void {
            screen.openDiff([1, 1, 1]);
            keyClick(Qt.Key_Down);
            tryVerify(() => driver.root.diff !== null && !driver.root.diff.isLoading);

            keyClick(Qt.Key_Escape);
            driver.answerFiles([1, 1, 1]);
            tryVerify(() => screen.all(Accessible.ListItem).length === 3);

            tryCompare(screen.list(), "currentIndex", 1);
            verify(screen.list().activeFocus);
        }

        function test_theListReturnsToItsPlace(): void {
            screen.openFiles(Array(40).fill(1));
            keyClick(Qt.Key_End);
            keyClick(Qt.Key_Up);
            const position = screen.list().contentY;

            keyClick(Qt.Key_Return);
            tryVerify(() => driver.root.diff !== null);
            keyClick(Qt.Key_Escape);
            driver.answerFiles(Array(40).fill(1));

            tryVerify(() => screen.list().count === 40);
            compare(screen.list().currentIndex, 38);
            compare(screen.list().contentY, position);
        }

        function test_theWayBackLeadsToThePicker_data(): var {
            return [
                { tag: "button", back: () => mouseClick(screen.named("All projects")) },
                { tag: "key", back: () => keyClick(Qt.Key_Left, Qt.AltModifier) }
            ];
        }

        function test_theWayBackLeadsToThePicker(data: var): void {
            screen.openFiles([1]);

            data.back();

            screen.expectNamed("Choose Folder…");
        }
    }
}
