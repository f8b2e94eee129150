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

    Component {
        id: settingsWindow

        SettingsWindow {}
    }

    ScreenCase {
        id: screen

        name: "SettingsScreen"
        content: window
        showsSettings: true

        function open(): void {
            screen.showSettings();
            tryVerify(() => driver.root.settings.isKeyStateKnown);
        }

        /// With a key of the first provider in the keychain.
        function openWithKey(): void {
            driver.storeKey("openRouter", "sk-old");
            screen.open();
            tryVerify(() => driver.root.settings.hasSavedKey);
        }

        /// The visible item of this role and name, or null.
        function find(role: int, name: string): Item {
            const found = screen.all(role).filter(item => item.Accessible.name === name);
            return found.length === 0 ? null : found[0];
        }

        function field(name: string): Item {
            return screen.find(Accessible.EditableText, name);
        }

        function keyField(): Item {
            return screen.find(Accessible.Grouping, "API key");
        }

        function menu(): Item {
            return screen.find(Accessible.ComboBox, "Model");
        }

        function menuRow(name: string): Item {
            tryVerify(() => screen.menu().popup.opened);
            const list = screen.menu().popup.contentItem;
            tryVerify(() => list.count > 0 && list.itemAtIndex(list.count - 1) !== null);
            for (let i = 0; i < list.count; ++i) {
                if (list.itemAtIndex(i).Accessible.name === name) {
                    return list.itemAtIndex(i);
                }
            }
            return null;
        }

        function pickModel(name: string): void {
            mouseClick(screen.menu());
            verify(screen.menu().popup.opened);
            const row = screen.menuRow(name);
            // What has just opened meets the pointer with its first frame.
            tryVerify(() => {
                mouseMove(row, 5, row.hovered ? 5 : 6);
                return row.hovered;
            });
            mouseClick(row);
        }

        function type(text: string): void {
            for (const character of text) {
                keyClick(character);
            }
        }

        function typeKey(text: string): void {
            mouseClick(screen.keyField());
            screen.type(text);
        }

        function waitForKeychain(): void {
            tryVerify(() => !driver.root.settings.isChangingKey);
        }

        function test_itsTextsAreTheFixedOnes(): void {
            screen.open();

            for (const text of ["AI Settings", "OpenRouter", "OpenAI", "Custom", "No key saved", "Stored securely in the macOS Keychain — saving may ask for your login password.", "Save", "Appearance", "System", "Light", "Dark"]) {
                verify(screen.named(text) !== null, text);
            }
            compare(screen.named("Remove"), null);
            compare(screen.field("Base URL"), null);
            compare(screen.field("Model"), null);
            compare(screen.keyField().Accessible.description, "");
            compare(screen.all(Accessible.AlertMessage).length, 0);
            compare(screen.all(Accessible.Dialog).length, 0);
        }

        function test_aSavedKeyIsNamedAndCanBeReplacedOrRemoved(): void {
            screen.openWithKey();

            verify(screen.named("Key saved for OpenRouter") !== null);
            verify(screen.named("Remove") !== null);
            compare(screen.keyField().Accessible.description, "Enter a new key to replace the saved one");
            compare(driver.root.settings.apiKeyDraft, "");
        }

        function test_theKeysStateIsBlankUntilTheKeychainAnswers(): void {
            driver.hangKeychain();
            screen.showSettings();
            const height = screen.expectNamed("Save").mapToItem(window, 0, 0).y;
            compare(screen.named("No key saved"), null);

            driver.letKeychainGo();

            screen.expectNamed("No key saved");
            compare(screen.named("Save").mapToItem(window, 0, 0).y, height);
        }

        function test_aProviderIsChosen_data(): var {
            return [
                { tag: "click", choose: () => mouseClick(screen.named("Custom")) },
                {
                    tag: "arrows",
                    choose: () => {
                        keyClick(Qt.Key_Right);
                        keyClick(Qt.Key_Down);
                        keyClick(Qt.Key_Right);
                    }
                },
                { tag: "screen reader", choose: () => screen.named("Custom").Accessible.pressAction() },
                { tag: "screen reader's toggle", choose: () => screen.named("Custom").Accessible.toggleAction() }
            ];
        }

        function test_aProviderIsChosen(data: var): void {
            screen.open();

            data.choose();

            compare(driver.root.settings.providerName, "Custom");
            compare(screen.find(Accessible.RadioButton, "Custom").Accessible.checked, true);
            compare(screen.find(Accessible.RadioButton, "OpenRouter").Accessible.checked, false);
            compare(screen.field("Base URL").Accessible.description, "https://…");
            compare(screen.field("Model").Accessible.description, "e.g. llama3.2");
            compare(screen.menu(), null);
        }

        function test_theArrowsGoBackAndStopAtTheEnds(): void {
            screen.open();

            keyClick(Qt.Key_Right);
            keyClick(Qt.Key_Left);
            keyClick(Qt.Key_Left);
            keyClick(Qt.Key_Up);

            compare(driver.root.settings.providerIndex, 0);
        }

        function test_theModelsOfTheProviderAreOffered(): void {
            screen.open();
            compare(screen.menu().Accessible.description, "Gemini 3.8 Flash");

            mouseClick(screen.menu());

            compare(screen.menuRow("Gemini 3.8 Flash").Accessible.description, "Recommended. Fast and strong at code.");
            compare(screen.menuRow("Gemini 3.8 Flash").Accessible.selected, true);
            compare(screen.menuRow("Claude Sonnet 5").Accessible.description, "Highest quality. Costs more per review.");
            compare(screen.menuRow("Custom model ID…").Accessible.description, "");
            keyClick(Qt.Key_Escape);
            tryVerify(() => !screen.menu().popup.visible);
        }

        function test_aModelIsChosen_data(): var {
            return [
                { tag: "click", choose: () => screen.pickModel("GPT-6 Luna") },
                {
                    tag: "Return, Down, Return",
                    choose: () => {
                        keyClick(Qt.Key_Return);
                        keyClick(Qt.Key_Down);
                        keyClick(Qt.Key_Return);
                    }
                },
                {
                    tag: "Space, letter, Enter",
                    choose: () => {
                        keyClick(Qt.Key_Space);
                        screen.menuRow("GPT-6 Luna");
                        keyClick("g");
                        keyClick(Qt.Key_Enter);
                    }
                },
                { tag: "Down on the closed box", choose: () => keyClick(Qt.Key_Down) },
                {
                    tag: "screen reader",
                    choose: () => {
                        screen.menu().Accessible.pressAction();
                        screen.menuRow("GPT-6 Luna").Accessible.pressAction();
                    }
                }
            ];
        }

        function test_aModelIsChosen(data: var): void {
            screen.open();
            screen.menu().forceActiveFocus(Qt.TabFocusReason);

            data.choose();

            compare(driver.root.settings.model, "openai/gpt-6-luna");
            compare(screen.menu().displayText, "GPT-6 Luna");
            verify(!screen.menu().popup.visible);
            verify(screen.menu().activeFocus);
        }

        function test_theModelBoxFollowsTheProvider(): void {
            screen.open();
            screen.pickModel("Claude Sonnet 5");

            mouseClick(screen.named("OpenAI"));
            compare(screen.menu().displayText, "GPT-6 Luna");
            compare(screen.menu().count, 3);
            mouseClick(screen.named("OpenRouter"));

            compare(screen.menu().displayText, "Gemini 3.8 Flash");
            compare(screen.menu().currentIndex, 0);
        }

        function test_anyOtherModelIsTyped(): void {
            screen.open();

            screen.pickModel("Custom model ID…");
            compare(screen.field("Model").Accessible.description, "e.g. google/gemini-3.8-flash");
            verify(screen.field("Model").activeFocus);
            screen.type("mine");

            compare(driver.root.settings.model, "mine");
            compare(driver.root.settings.isUsingCustomModel, true);
        }

        function test_whatWasTypedIsThereAfterASuggestionAgain(): void {
            screen.open();
            screen.pickModel("Custom model ID…");
            screen.type("mine");

            screen.pickModel("GPT-6 Luna");
            compare(screen.field("Model"), null);
            screen.pickModel("Custom model ID…");

            compare(screen.field("Model").text, "mine");
            compare(driver.root.settings.model, "mine");
        }

        function test_whoPassesTheCustomEntryKeepsTheKeyboardOnTheBox(): void {
            screen.open();
            screen.menu().forceActiveFocus(Qt.TabFocusReason);

            for (let i = 0; i < 3; ++i) {
                keyClick(Qt.Key_Down);
            }

            verify(screen.field("Model") !== null);
            verify(screen.menu().activeFocus);
        }

        function test_theFieldOfAnErrorIsMarked_data(): var {
            return [
                { tag: "base URL", baseURL: "localhost:8080/v1", message: "Enter a valid base URL (starting with http:// or https://).", marked: "Base URL" },
                { tag: "model", baseURL: "http://localhost:8080/v1", message: "Enter a model name.", marked: "Model" }
            ];
        }

        function test_theFieldOfAnErrorIsMarked(data: var): void {
            screen.open();
            mouseClick(screen.named("Custom"));
            const field = screen.field("Base URL");
            field.forceActiveFocus();
            field.selectAll();
            screen.type(data.baseURL);

            mouseClick(screen.named("Save"));

            compare(screen.all(Accessible.AlertMessage).map(box => box.Accessible.name), [data.message]);
            compare(screen.field(data.marked).background.border.color, Theme.error);
            compare(screen.named("Saved."), null);
        }

        function test_aConfigurationIsSaved_data(): var {
            return [
                { tag: "button", save: () => mouseClick(screen.named("Save")) },
                { tag: "Return in a field", save: () => keyClick(Qt.Key_Return) },
                { tag: "screen reader", save: () => screen.named("Save").Accessible.pressAction() }
            ];
        }

        function test_aConfigurationIsSaved(data: var): void {
            screen.open();
            screen.pickModel("Custom model ID…");
            screen.type(" mine ");

            data.save();

            screen.expectNamed("Saved.");
            compare(screen.field("Model").text, "mine");
            compare(screen.all(Accessible.AlertMessage).length, 0);
        }

        function test_theFirstKeyIsExplained(): void {
            screen.open();
            screen.typeKey("sk-1");

            keyClick(Qt.Key_Return);

            const alert = screen.expectNamed("Your API Key Is Stored in the Keychain");
            compare(alert.Accessible.role, Accessible.Dialog);
            compare(alert.Accessible.description, "Vantrel stores your API key in the macOS Keychain, Apple's encrypted credential store. Your Mac may ask for your login password to allow this — that's normal and only needed once.");
            verify(screen.named("Continue").activeFocus);
            compare(driver.storedKey("openRouter"), "");
        }

        function test_theExplanationHasOneWayOut(): void {
            screen.open();
            screen.typeKey("sk-1");
            keyClick(Qt.Key_Return);
            screen.expectNamed("Continue");

            keyClick(Qt.Key_Escape);
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Backtab);
            mouseClick(screen.named("OpenAI"));
            mouseClick(window, 10, 10);

            verify(screen.named("Continue").activeFocus);
            compare(driver.root.settings.providerName, "OpenRouter");
        }

        function test_continueSavesTheKey_data(): var {
            return [
                { tag: "button", go: () => mouseClick(screen.named("Continue")) },
                { tag: "Return", go: () => keyClick(Qt.Key_Return) },
                { tag: "Enter", go: () => keyClick(Qt.Key_Enter) },
                { tag: "Space", go: () => keyClick(Qt.Key_Space) },
                { tag: "screen reader", go: () => screen.named("Continue").Accessible.pressAction() }
            ];
        }

        function test_continueSavesTheKey(data: var): void {
            screen.open();
            screen.typeKey("sk-1");
            keyClick(Qt.Key_Return);
            screen.expectNamed("Continue");

            data.go();

            screen.expectNamed("Saved.");
            compare(screen.named("Continue"), null);
            compare(driver.storedKey("openRouter"), "sk-1");
            verify(screen.named("Key saved for OpenRouter") !== null);
            verify(screen.named("Save").activeFocus);
        }

        function test_aSaveUnderWayIsShown(): void {
            driver.recordShownKeychainNotice();
            screen.open();
            screen.typeKey("sk-1");
            driver.hangKeychain();
            const save = screen.named("Save");
            save.forceActiveFocus(Qt.TabFocusReason);

            keyClick(Qt.Key_Space);
            verify(!save.enabled);
            compare(save.Accessible.description, "unavailable");
            compare(screen.named("Saved."), null);
            driver.letKeychainGo();
            screen.waitForKeychain();

            verify(screen.named("Saved.") !== null);
            verify(save.enabled);
            verify(save.activeFocus);
        }

        function test_aRefusedKeyIsToldAndStays(): void {
            driver.recordShownKeychainNotice();
            screen.open();
            screen.typeKey("sk-1");
            driver.refuseKeyChange();

            keyClick(Qt.Key_Return);

            const failure = screen.expectNamed("Couldn't save the API key: Keychain error (status -25308)");
            compare(failure.Accessible.role, Accessible.AlertMessage);
            compare(driver.root.settings.apiKeyDraft, "sk-1");
        }

        function test_removingIsConfirmed(): void {
            screen.openWithKey();

            mouseClick(screen.named("Remove"));

            const alert = screen.expectNamed("Remove the saved API key for OpenRouter?");
            compare(alert.Accessible.role, Accessible.Dialog);
            verify(screen.named("Cancel").activeFocus);
            compare(driver.storedKey("openRouter"), "sk-old");
        }

        function test_theQuestionNamesTheProvider(): void {
            driver.storeKey("custom", "sk-own");
            screen.open();
            mouseClick(screen.named("Custom"));

            mouseClick(screen.expectNamed("Remove"));

            screen.expectNamed("Remove the saved API key for Custom?");
        }

        function test_aRemovalIsCancelled_data(): var {
            return [
                { tag: "button", cancel: () => mouseClick(screen.named("Cancel")) },
                { tag: "Escape", cancel: () => keyClick(Qt.Key_Escape) },
                { tag: "Return", cancel: () => keyClick(Qt.Key_Return) },
                { tag: "screen reader", cancel: () => screen.named("Cancel").Accessible.pressAction() }
            ];
        }

        function test_aRemovalIsCancelled(data: var): void {
            screen.openWithKey();
            mouseClick(screen.named("Remove"));
            screen.expectNamed("Cancel");

            data.cancel();

            compare(screen.named("Cancel"), null);
            verify(!driver.root.settings.isChangingKey);
            compare(driver.storedKey("openRouter"), "sk-old");
            verify(screen.named("Save").activeFocus);
        }

        function test_aRemovalIsDone_data(): var {
            return [
                { tag: "button", remove: button => mouseClick(button) },
                {
                    tag: "Tab and Return",
                    remove: () => {
                        keyClick(Qt.Key_Tab);
                        keyClick(Qt.Key_Return);
                    }
                },
                {
                    tag: "Backtab and Space",
                    remove: () => {
                        keyClick(Qt.Key_Backtab);
                        keyClick(Qt.Key_Space);
                    }
                },
                { tag: "screen reader", remove: button => button.Accessible.pressAction() }
            ];
        }

        function test_aRemovalIsDone(data: var): void {
            screen.openWithKey();
            mouseClick(screen.named("Remove"));
            screen.expectNamed("Cancel");
            const buttons = screen.all(Accessible.Button).filter(button => button.Accessible.name === "Remove");

            data.remove(buttons[buttons.length - 1]);

            screen.expectNamed("API key removed.");
            compare(driver.storedKey("openRouter"), "");
            verify(screen.named("No key saved") !== null);
            compare(screen.named("Remove"), null);
            verify(screen.named("Save").activeFocus);
        }

        function test_aRefusedRemovalIsTold(): void {
            screen.openWithKey();
            driver.refuseKeyChange();
            mouseClick(screen.named("Remove"));
            screen.expectNamed("Cancel");

            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Return);

            screen.expectNamed("Couldn't remove the API key: Keychain error (status -25308)");
            verify(screen.named("Remove") !== null);
        }

        function test_theAppearanceIsChosenAtOnce(): void {
            screen.open();

            mouseClick(screen.named("Dark"));
            compare(driver.root.settings.appearanceIndex, 2);
            keyClick(Qt.Key_Left);
            compare(driver.root.settings.appearanceIndex, 1);
        }

        function test_tabGoesThroughTheForm(): void {
            screen.openWithKey();
            const stops = [];

            for (let i = 0; i < 8; ++i) {
                stops.push(screen.stopName());
                keyClick(Qt.Key_Tab);
            }

            compare(stops, ["Provider", "Model", "API key", "Show key", "Save", "Remove", "Theme", "Run Setup…"]);
            compare(screen.stopName(), "Provider");
        }

        /// The name of what the keyboard is on, which may be told by what stands for it.
        function stopName(): string {
            let item = window.Window.activeFocusItem;
            while (item.Accessible.ignored || item.Accessible.name === "") {
                item = item.parent;
            }
            return item.Accessible.name;
        }

        function test_noScreenReaderIsGivenAKey(): void {
            screen.open();
            screen.typeKey("sk-secret");
            mouseClick(screen.named("Show key"));
            compare(screen.named("Hide key").Accessible.checked, true);

            const spoken = driver.spokenTexts(window);

            verify(spoken.includes("API key"));
            compare(spoken.filter(text => text.includes("secret")), []);
        }

        function test_aKeyIsHiddenAgainOnceItIsSaved(): void {
            driver.recordShownKeychainNotice();
            screen.open();
            screen.typeKey("sk-1");
            mouseClick(screen.named("Show key"));

            mouseClick(screen.named("Save"));
            screen.waitForKeychain();

            verify(screen.named("Show key") !== null);
        }

        function test_inALowWindowTheKeyboardBringsItsControlIntoSight(): void {
            screen.open();
            window.height = 240;
            const isInSight = item => {
                const top = item.mapToItem(window, 0, 0).y;
                return top >= 0 && top + item.height <= window.height;
            };
            const themes = screen.find(Accessible.Grouping, "Theme");
            verify(!isInSight(themes));

            keyClick(Qt.Key_Backtab);
            keyClick(Qt.Key_Backtab);
            verify(isInSight(themes));
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Tab);

            verify(isInSight(screen.find(Accessible.Grouping, "Provider")));
        }

        function test_theWindowShowsWhatIsStored(): void {
            const opened = createTemporaryObject(settingsWindow, window, {
                viewModel: driver.root.settings
            });
            verify(!opened.visible);
            compare(opened.title, "Settings");
            driver.storeKey("openRouter", "sk-old");
            driver.root.settings.model = "unsaved";

            opened.showSettings();

            tryVerify(() => opened.visible);
            tryVerify(() => driver.root.settings.hasSavedKey);
            compare(driver.root.settings.model, "unsaved");
        }
    }

    ScreenCase {
        id: firstStart

        name: "SettingsAtFirstStart"
        content: window
        acknowledgesNotice: false
        showsSettings: true

        function test_theKeychainIsReadAfterItsNotice(): void {
            driver.storeKey("openRouter", "sk-old");
            firstStart.showSettings();

            firstStart.expectNamed("Vantrel Needs Keychain Access");
            compare(firstStart.named("Key saved for OpenRouter"), null);
            compare(firstStart.named("No key saved"), null);
            keyClick(Qt.Key_Escape);

            firstStart.expectNamed("Key saved for OpenRouter");
            compare(firstStart.named("Vantrel Needs Keychain Access"), null);
            const providers = firstStart.all(Accessible.Grouping).find(item => item.Accessible.name === "Provider");
            verify(providers.activeFocus);
        }
    }
}
