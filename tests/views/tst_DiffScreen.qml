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

        function panes(): CodePanesItem {
            return findChild(window, "panes");
        }

        function cards(): var {
            return screen.all(Accessible.ListItem);
        }

        /// Drags the divider by a distance, in the window's coordinates since it moves along.
        function dragDivider(distance: real): void {
            const from = findChild(window, "divider").mapToItem(window, 4, 300);
            mousePress(window, from.x, from.y);
            mouseMove(window, from.x + distance / 2, from.y);
            mouseMove(window, from.x + distance, from.y);
            mouseRelease(window, from.x + distance, from.y);
        }

        name: "DiffScreen"
        content: window

        function test_theFixedTextsAreThere(): void {
            screen.openDiff([4]);

            for (const text of ["All files", "Change 1 of 4", "Before", "After", "This change", "Reading the hunk…"]) {
                verify(screen.named(text) !== null, text);
            }
            verify(screen.named("Changes in file0.cpp") !== null);
            verify(screen.named("src/file0.cpp") !== null);
        }

        function test_aFileWithoutHunksHasNoChangesAndEmptyPanes(): void {
            screen.openFiles([0]);
            keyClick(Qt.Key_Return);
            driver.answerNoHunks();

            screen.expectNamed("No changes");
            compare(screen.cards().length, 0);
            verify(screen.named("This change") === null);
        }

        function test_keysStepThroughTheHunks_data(): var {
            return [
                { tag: "Down", keys: [Qt.Key_Down], position: "Change 2 of 4" },
                { tag: "j j k", keys: [Qt.Key_J, Qt.Key_J, Qt.Key_K], position: "Change 2 of 4" },
                { tag: "End", keys: [Qt.Key_End], position: "Change 4 of 4" },
                { tag: "End, Home", keys: [Qt.Key_End, Qt.Key_Home], position: "Change 1 of 4" },
                { tag: "past the last", keys: [Qt.Key_End, Qt.Key_Down], position: "Change 1 of 2" },
                { tag: "before the first", keys: [Qt.Key_End, Qt.Key_Down, Qt.Key_Up], position: "Change 4 of 4" }
            ];
        }

        function test_keysStepThroughTheHunks(data: var): void {
            screen.openDiff([4, 2]);

            for (const key of data.keys) {
                keyClick(key);
                tryVerify(() => driver.root.diff !== null && !driver.root.diff.isLoading);
            }

            screen.expectNamed(data.position);
        }

        function test_theStepsAreDisabledAtBothEnds(): void {
            screen.openDiff([1]);

            verify(!screen.named("Previous change").enabled);
            verify(!screen.named("Next change").enabled);
        }

        function test_theStepsSayWhereTheyLead(): void {
            screen.openDiff([2, 1]);
            verify(screen.named("Next change").enabled);

            mouseClick(screen.named("Next change"));
            screen.expectNamed("Change 2 of 2");
            mouseClick(screen.expectNamed("Next file: file1.cpp"));

            screen.expectNamed("Change 1 of 1");
            verify(screen.named("Previous file: file0.cpp").enabled);
            mouseClick(screen.named("Previous file: file0.cpp"));
            screen.expectNamed("Change 2 of 2");
        }

        function test_aClickSelectsAHunk_data(): var {
            return [
                { tag: "on the head", y: 16 },
                { tag: "on a row", y: 45 }
            ];
        }

        function test_aClickSelectsAHunk(data: var): void {
            screen.openDiff([3]);

            mouseClick(screen.cards()[1], 200, data.y);

            screen.expectNamed("Change 2 of 3");
            verify(screen.cards()[1].Accessible.selected);
            verify(!screen.cards()[0].Accessible.selected);
        }

        function test_aScreenReaderSelectsAHunk(): void {
            screen.openDiff([3]);

            screen.named("Change 3 of 3, @@ -21 +21 @@").Accessible.pressAction();

            screen.expectNamed("Change 3 of 3");
        }

        function test_theSelectedHunkIsScrolledIntoView(): void {
            screen.openDiff([60]);
            compare(screen.panes().contentY, 0);

            keyClick(Qt.Key_End);

            compare(screen.panes().contentY, screen.panes().contentHeight - screen.panes().height);
            keyClick(Qt.Key_Home);
            compare(screen.panes().contentY, 0);
        }

        function test_keysScrollByPages(): void {
            screen.openDiff([60]);
            const page = screen.panes().height - 40;

            keyClick(Qt.Key_PageDown);
            compare(screen.panes().contentY, page);
            keyClick(Qt.Key_Space);
            compare(screen.panes().contentY, 2 * page);
            keyClick(Qt.Key_PageUp);
            compare(screen.panes().contentY, page);
            verify(screen.named("Change 1 of 60") !== null);
        }

        function test_theWheelScrolls(): void {
            screen.openDiff([60]);

            mouseWheel(screen.panes(), 200, 200, 0, -240);
            verify(screen.panes().contentY > 0);
            mouseWheel(screen.panes(), 200, 200, 0, 2400);
            compare(screen.panes().contentY, 0);
        }

        function test_aWheelScrollsSideways_data(): var {
            return [
                { tag: "sideways", dx: -240, dy: 0, modifiers: Qt.NoModifier },
                { tag: "with Shift", dx: 0, dy: -240, modifiers: Qt.ShiftModifier }
            ];
        }

        function test_aWheelScrollsSideways(data: var): void {
            driver.openRepository();
            driver.answerFileOfLine("0123456789".repeat(30));
            tryVerify(() => driver.root.fileList.hasLoaded);
            driver.root.fileList.openFile(0);
            tryVerify(() => driver.root.diff !== null && !driver.root.diff.isLoading);
            tryVerify(() => screen.panes().maximumContentX > 0);

            mouseWheel(screen.panes(), 200, 60, data.dx, data.dy, Qt.NoButton, data.modifiers);
            compare(screen.panes().contentX, 120);
            mouseWheel(screen.panes(), 200, 60, 100 * data.dx, 100 * data.dy, Qt.NoButton, data.modifiers);

            compare(screen.panes().contentX, Math.round(screen.panes().maximumContentX));
            compare(screen.panes().contentY, 0);
        }

        function test_theSelectedHunkStaysInViewWhenTheWindowGetsLower(): void {
            screen.openDiff([60]);
            for (let i = 0; i < 8; ++i) {
                keyClick(Qt.Key_Down);
            }
            compare(screen.panes().contentY, 0);

            window.height = 500;

            const card = screen.expectNamed("Change 9 of 60, @@ -81 +81 @@");
            const top = card.mapToItem(screen.panes(), 0, 0).y;
            verify(top >= 0);
            verify(top + card.height <= screen.panes().height);
        }

        function test_aHunkThatIsOutOfViewStaysThereWhenTheWindowGetsLower(): void {
            screen.openDiff([60]);
            keyClick(Qt.Key_PageDown);
            keyClick(Qt.Key_PageDown);
            const before = screen.panes().contentY;

            window.height = 500;

            compare(screen.panes().contentY, before);
        }

        function test_aDragSelectsCodeThatIsCopied(): void {
            screen.openDiff([3]);
            const panes = screen.panes();
            const middle = panes.width / 2;

            mousePress(panes, 100, 55);
            mouseMove(panes, 200, 90, -1, Qt.LeftButton);
            mouseMove(panes, 300, 127, -1, Qt.LeftButton);
            mouseRelease(panes, 300, 127);
            keyClick(Qt.Key_C, Qt.ControlModifier);
            tryVerify(() => driver.clipboard().endsWith("old 1"), 5000, driver.clipboard());
            compare(driver.root.diff.selectedHunkIndex, 0);

            mouseDoubleClickSequence(panes, middle + 75, 127);
            keyClick(Qt.Key_C, Qt.ControlModifier);
            tryVerify(() => driver.clipboard() === "new");
        }

        function test_escapeEndsASelectionBeforeItLeadsBack(): void {
            screen.openDiff([3]);
            keyClick(Qt.Key_Down, Qt.ShiftModifier);
            keyClick(Qt.Key_C, Qt.ControlModifier);
            tryVerify(() => driver.clipboard() === "new 0\n");
            compare(driver.root.diff.selectedHunkIndex, 0);

            keyClick(Qt.Key_Escape);
            verify(driver.root.diff !== null);
            keyClick(Qt.Key_Escape);

            screen.expectNamed("All projects");
        }

        function test_keysSelectASideAsAWhole(): void {
            screen.openDiff([3]);
            keyClick(Qt.Key_Down);

            keyClick(Qt.Key_A, Qt.ControlModifier);
            keyClick(Qt.Key_C, Qt.ControlModifier);

            tryVerify(() => driver.clipboard() === "new 1");
        }

        function test_onlyCardsInViewAreMade(): void {
            screen.openDiff([5000]);

            verify(screen.cards().length < 20);
            keyClick(Qt.Key_End);
            screen.expectNamed("Change 5000 of 5000");
            verify(screen.cards().length < 20);
        }

        function test_anExplanationStreamsInAndEndsWithTagAndPoints(): void {
            screen.openDiff([1]);
            tryVerify(() => driver.explanationCount() === 1);

            driver.pushProse("A token is ");
            screen.expectNamed("A token is ");
            verify(screen.named("Reading the hunk…") === null);
            driver.pushProse("refreshed once.");
            screen.expectNamed("A token is refreshed once.");

            driver.complete("Bug fix", "A token is refreshed once.", ["Callers wait.", "No lock is held."]);
            screen.expectNamed("Bug fix");
            for (const text of ["This change", "A token is refreshed once.", "Callers wait.", "No lock is held."]) {
                verify(screen.named(text) !== null, text);
            }
            verify(screen.named("Change 1 of 1, Bug fix, @@ -1 +1 @@") !== null);
        }

        function test_aFailureStandsInThePlaceOfTheExplanation(): void {
            screen.openDiff([1]);
            tryVerify(() => driver.explanationCount() === 1);

            driver.failForMissingKey();

            const box = screen.expectNamed("Add an API key in Settings to use AI features.");
            compare(box.Accessible.role, Accessible.AlertMessage);
            verify(screen.named("Add an API key in Settings →") !== null);
            verify(screen.named("Reading the hunk…") === null);
        }

        function test_aLongExplanationScrollsInItsHalf(): void {
            screen.openDiff([1]);
            tryVerify(() => driver.explanationCount() === 1);

            driver.complete("Big", "word ".repeat(2000), []);

            screen.expectNamed("Big");
            const panel = screen.all(Accessible.Section)[0];
            verify(panel.height <= 0.55 * (window.height - 88) + 1, panel.height);
            tryVerify(() => panel.contentHeight > panel.height);
        }

        function test_theWayBackLeadsToTheFileList_data(): var {
            return [
                { tag: "button", back: () => mouseClick(screen.named("All files")) },
                { tag: "Alt+Left", back: () => keyClick(Qt.Key_Left, Qt.AltModifier) },
                { tag: "Escape", back: () => keyClick(Qt.Key_Escape) }
            ];
        }

        function test_theWayBackLeadsToTheFileList(data: var): void {
            screen.openDiff([2]);

            data.back();

            screen.expectNamed("All projects");
            compare(driver.root.diff, null);
        }

        function test_tabGoesFromTheStepsToThePanesAndAround(): void {
            screen.openDiff([2, 1]);
            const names = [];

            for (let i = 0; i < 3; ++i) {
                keyClick(Qt.Key_Tab);
                names.push(window.Window.activeFocusItem.Accessible.name);
            }
            keyClick(Qt.Key_Tab);

            compare(names, ["All files", "Next change", ""]);
            keyClick(Qt.Key_Backtab);
            keyClick(Qt.Key_Down);
            screen.expectNamed("Change 2 of 2");
        }

        function test_theDividerResizesThePanelUntilItIsReset(): void {
            screen.openDiff([1, 1]);
            const before = screen.panes().width;

            screen.dragDivider(-60);
            compare(screen.panes().width, before - 60);

            keyClick(Qt.Key_Down);
            screen.expectNamed("Previous file: file0.cpp");
            compare(screen.panes().width, before - 60);

            mouseDoubleClickSequence(findChild(window, "divider"), 4, 300);
            compare(screen.panes().width, before);
        }

        function test_theDividerKeepsThePanelWithinItsBounds(): void {
            screen.openDiff([1]);

            screen.dragDivider(-800);
            compare(window.width - screen.panes().width, 560);
            screen.dragDivider(800);
            compare(window.width - screen.panes().width, 320);
        }

        function test_theExplanationGoesBelowThePanesInANarrowWindow(): void {
            screen.openDiff([1]);
            compare(screen.panes().width, 900);

            window.width = 900;
            window.height = 600;

            compare(screen.panes().width, 900);
            compare(screen.panes().mapToItem(window, 0, screen.panes().height).y, 600 - 208);
            verify(screen.named("This change").mapToItem(window, 0, 0).y > 600 - 208);
        }

        function test_everyTextIsPlain(): void {
            screen.openDiff([2]);
            tryVerify(() => driver.explanationCount() === 2);
            const address = driver.temptingAddress();
            driver.complete("<b>Tag</b>", `<img src='${address}'> ![a](${address}) *prose*`, ["<i>point</i>"]);
            screen.expectNamed("<b>Tag</b>");
            let count = 0;

            screen.walk(window, item => {
                if (item instanceof Text || item instanceof TextEdit) {
                    compare(item.textFormat, Text.PlainText, item.text);
                    ++count;
                }
            });
            grabImage(window);
            grabImage(window);

            verify(count > 10);
            verify(screen.named(`<img src='${address}'> a (${address}) prose`) !== null);
            verify(screen.named("<i>point</i>") !== null);
            compare(driver.isTempted(), false);
        }

        function test_theExplanationIsCopiedFromTheKeyboard(): void {
            screen.openDiff([1]);
            tryVerify(() => driver.explanationCount() === 1);
            driver.complete("Tag", "*Plums* keep.", []);
            const prose = screen.expectNamed("Plums keep.");

            mouseDoubleClickSequence(prose, 10, 10);
            keyClick(Qt.Key_C, Qt.ControlModifier);

            compare(driver.clipboard(), "Plums");
            keyClick(Qt.Key_Escape);
            compare(prose.selectedText, "");
            keyClick(Qt.Key_Escape);
            screen.expectNamed("All projects");
        }
    }
}
