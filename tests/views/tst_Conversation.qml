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

        name: "Conversation"
        content: window

        function field(): Item {
            return screen.expectNamed("Ask a follow-up…");
        }

        /// Opens a file whose first hunk is explained.
        function openExplained(): void {
            screen.openDiff([2]);
            tryVerify(() => driver.explanationCount() === 2);
            driver.complete("Bug fix", "Keeps the last plum.", []);
            screen.expectNamed("Keeps the last plum.");
        }

        function type(text: string): void {
            screen.field().forceActiveFocus();
            for (const character of text) {
                keyClick(character);
            }
        }

        function ask(text: string): void {
            const before = driver.answerCount();
            screen.type(text);
            keyClick(Qt.Key_Return);
            tryVerify(() => driver.answerCount() === before + 1);
        }

        function bubbles(): var {
            return screen.all(Accessible.ListItem).filter(item => item.Accessible.name.startsWith("You: ") || item.Accessible.name.startsWith("Answer: "));
        }

        function test_isClosedWhileTheHunkIsExplained(): void {
            screen.openDiff([1]);

            compare(screen.field().enabled, false);
            compare(screen.named("Send").enabled, false);
            verify(screen.named("Ask about this hunk — intent, risk, or what to test.") !== null);
        }

        function test_sendIsThereOnceADraftIsMoreThanBlanks(): void {
            screen.openExplained();
            compare(screen.named("Send").enabled, false);

            screen.type(" ");
            compare(screen.named("Send").enabled, false);
            screen.type("w");

            compare(screen.named("Send").enabled, true);
        }

        function test_aQuestionIsAnsweredAsItComes(): void {
            screen.openExplained();

            screen.ask("why");

            screen.expectNamed("You: why");
            screen.expectNamed("Thinking");
            compare(screen.field().text, "");
            driver.pushAnswer("Because ");
            tryVerify(() => screen.named("Thinking") === null);
            driver.pushAnswer("of plums.");
            driver.finishAnswer();
            screen.expectNamed("Answer: Because of plums.");
            verify(screen.named("Ask about this hunk — intent, risk, or what to test.") === null);
        }

        function test_theSendButtonSendsToo(): void {
            screen.openExplained();
            screen.type("why");

            mouseClick(screen.named("Send"));

            screen.expectNamed("You: why");
        }

        function test_shiftReturnBreaksTheLine(): void {
            screen.openExplained();
            screen.type("a");

            keyClick(Qt.Key_Return, Qt.ShiftModifier);
            keyClick("b");

            compare(screen.field().text, "a\nb");
            compare(driver.answerCount(), 0);
        }

        function test_returnLeadsFromThePanesToTheField(): void {
            screen.openExplained();
            verify(!screen.field().activeFocus);

            keyClick(Qt.Key_Return);

            verify(screen.field().activeFocus);
        }

        function test_returnStaysInThePanesWhileTheFieldIsClosed(): void {
            screen.openDiff([2]);

            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Down);

            compare(driver.root.diff.selectedHunkIndex, 1);
        }

        function test_aSuggestedQuestionIsSent(): void {
            screen.openExplained();
            screen.ask("why");
            driver.pushAnswer("Because.");
            driver.finishAnswer();
            screen.expectNamed("Answer: Because.");
            driver.answerQuestions(["Since when?", "And now?"]);

            const chip = screen.expectNamed("And now?");
            tryVerify(() => !isPolishScheduled(chip.parent));
            mouseClick(chip);

            screen.expectNamed("You: And now?");
            tryVerify(() => driver.answerCount() === 2);
        }

        function test_aFailureStandsBehindTheQuestion(): void {
            screen.openExplained();
            screen.ask("why");

            driver.failAnswer("Connection refused");

            const box = screen.expectNamed("Connection refused");
            compare(box.Accessible.role, Accessible.AlertMessage);
            const question = screen.expectNamed("You: why");
            tryVerify(() => box.mapToItem(window, 0, 0).y > question.mapToItem(window, 0, 0).y);
            tryVerify(() => screen.named("Thinking") === null);
        }

        function test_aLongConversationFollowsItsEnd(): void {
            screen.openExplained();
            screen.ask("why");

            driver.pushAnswer("word ".repeat(600) + "end");
            driver.finishAnswer();

            tryVerify(() => screen.bubbles().length > 0 && screen.bubbles().some(item => item.Accessible.name.endsWith("end")));
            const list = screen.expectNamed("Conversation");
            tryVerify(() => Math.abs(list.contentY + list.height - list.originY - list.contentHeight - list.bottomMargin) < 1);
        }

        function test_aFieldOfManyLinesGrowsToAMeasure(): void {
            screen.openExplained();
            const send = screen.named("Send");
            const before = screen.field().height;

            for (let i = 0; i < 20; ++i) {
                screen.type("x");
                keyClick(Qt.Key_Return, Qt.ShiftModifier);
            }

            verify(screen.field().height > before);
            verify(send.mapToItem(window, 0, send.height).y <= 824);
            verify(screen.field().mapToItem(window, 0, 0).y < 824);
        }

        function test_escapeLeadsBackToThePanesAndKeepsTheDraft(): void {
            screen.openExplained();
            screen.type("half");

            keyClick(Qt.Key_Escape);
            keyClick(Qt.Key_Down);

            screen.expectNamed("Change 2 of 2");
            keyClick(Qt.Key_Up);
            screen.expectNamed("Change 1 of 2");
            compare(screen.field().text, "half");
        }

        function test_altArrowsStepFromTheField(): void {
            screen.openExplained();
            screen.field().forceActiveFocus();

            keyClick(Qt.Key_Down, Qt.AltModifier);

            screen.expectNamed("Change 2 of 2");
        }

        function test_tabLeavesTheField(): void {
            screen.openExplained();
            screen.type("why");

            keyClick(Qt.Key_Tab);

            compare(screen.named("Send").activeFocus, true);
            keyClick(Qt.Key_Space);
            screen.expectNamed("You: why");
        }

        function test_whatAModelWritesIsShownAndNotFollowed(): void {
            screen.openExplained();
            screen.ask("why");

            driver.pushAnswer(`<img src='${driver.temptingAddress()}'> ![a](${driver.temptingAddress()}) *b*`);
            driver.finishAnswer();

            screen.expectNamed(`Answer: <img src='${driver.temptingAddress()}'> a (${driver.temptingAddress()}) b`);
            grabImage(window);
            grabImage(window);
            compare(driver.isTempted(), false);
            screen.walk(window, item => {
                if (item instanceof TextEdit) {
                    compare(item.textFormat, TextEdit.PlainText, item.text);
                }
            });
        }

        function test_standsBesideTheExplanationInANarrowWindow(): void {
            screen.openExplained();

            window.width = 900;
            window.height = 600;

            const explanation = screen.named("This change").mapToItem(window, 0, 0);
            const conversation = screen.field().mapToItem(window, 0, 0);
            verify(explanation.x < 450);
            verify(conversation.x > 450);
            verify(screen.named("Send").mapToItem(window, screen.named("Send").width, screen.named("Send").height).y <= 600);
        }
    }
}
