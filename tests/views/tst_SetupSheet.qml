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
        id: newcomer

        name: "SetupOfANewcomer"
        content: window
        isConfigured: false

        function test_opensByItselfOnce(): void {
            verify(driver.root.setup.viewModel !== null);
            verify(newcomer.named("Set Up AI") !== null);

            keyClick(Qt.Key_Escape);

            compare(driver.root.setup.viewModel, null);
            driver.root.setup.openIfNeeded();
            compare(driver.root.setup.viewModel, null);
        }
    }

    ScreenCase {
        id: screen

        name: "SetupSheet"
        content: window

        readonly property AISetupViewModel setup: driver.root === null ? null : driver.root.setup.viewModel

        function open(): void {
            screen.openFiles([1, 1]);
            driver.root.setup.open();
        }

        function dialog(): Item {
            const dialogs = screen.all(Accessible.Dialog);
            return dialogs.length === 0 ? null : dialogs[dialogs.length - 1];
        }

        function field(label: string): Item {
            return screen.all(Accessible.EditableText).find(item => item.Accessible.name === label || item.Accessible.description === label);
        }

        function menu(): Item {
            return screen.all(Accessible.ComboBox)[0];
        }

        function alert(): string {
            const alerts = screen.all(Accessible.AlertMessage);
            return alerts.length === 0 ? "" : alerts[0].Accessible.name;
        }

        function type(text: string): void {
            for (const character of text) {
                keyClick(character);
            }
        }

        function verifyTexts(texts: var): void {
            for (const text of texts) {
                verify(screen.named(text) !== null, text);
            }
        }

        function test_isNotThereByItself(): void {
            screen.openFiles([1]);

            compare(screen.setup, null);
            compare(screen.dialog(), null);
        }

        function test_theFirstPageOffersThreeWays(): void {
            screen.open();

            compare(screen.dialog().Accessible.name, "Set Up AI");
            compare(screen.dialog().Accessible.description, "Vantrel explains your changes with an AI model you choose. Your code is sent only to that provider.");
            screen.verifyTexts(["Set Up AI", "Not Now"]);
            compare(screen.named("Sign in with OpenRouter").Accessible.description, "Recommended. Approve Vantrel in your browser and it gets its own OpenRouter key. Nothing to copy or paste.");
            compare(screen.named("Paste an API Key").Accessible.description, "Use a key you already have from OpenRouter or OpenAI.");
            compare(screen.named("Use a Local Model").Accessible.description, "Ollama or LM Studio on this Mac. Your code never leaves it.");
            verify(screen.named("Sign in with OpenRouter").activeFocus);
        }

        function test_whateverPutsItAwayShowsTheScreenAgain_data(): var {
            return [
                { tag: "button", go: () => mouseClick(screen.named("Not Now")) },
                { tag: "Escape", go: () => keyClick(Qt.Key_Escape) },
                { tag: "screen reader", go: () => screen.named("Not Now").Accessible.pressAction() }
            ];
        }

        function test_whateverPutsItAwayShowsTheScreenAgain(data: var): void {
            screen.open();

            data.go();

            compare(screen.setup, null);
            compare(screen.dialog(), null);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            tryVerify(() => driver.root.diff !== null);
        }

        function test_theScreenBelowIsOutOfReachMeanwhile(): void {
            screen.open();

            keyClick(Qt.Key_Left, Qt.AltModifier);
            mouseClick(window, 300, 300);
            mouseClick(window, 30, 65);

            compare(driver.root.diff, null);
            verify(driver.root.fileList !== null);
            verify(screen.dialog() !== null);
        }

        function test_tabGoesRoundWithinTheSheet(): void {
            screen.open();

            for (const name of ["Paste an API Key", "Use a Local Model", "Not Now", "Sign in with OpenRouter"]) {
                keyClick(Qt.Key_Tab);
                tryVerify(() => screen.named(name).activeFocus, 5000, name);
            }
            keyClick(Qt.Key_Backtab, Qt.ShiftModifier);
            tryVerify(() => screen.named("Not Now").activeFocus);
        }

        function test_theBrowserIsAwaited(): void {
            screen.open();

            keyClick(Qt.Key_Return);

            compare(screen.dialog().Accessible.name, "Sign in with OpenRouter");
            screen.verifyTexts(["Approve Vantrel on the OpenRouter page that just opened. Setup continues here on its own when you're done.", "Waiting for you to finish in your browser…"]);
            verify(screen.named("Cancel").activeFocus);
            tryVerify(() => driver.signInCount() === 1);
            keyClick(Qt.Key_Escape);
            compare(screen.dialog().Accessible.name, "Set Up AI");
            compare(screen.alert(), "");
            compare(driver.signInCount(), 0);
        }

        function test_aFailedSignInShowsItsSentenceBesideTheWays(): void {
            screen.open();
            mouseClick(screen.named("Sign in with OpenRouter"));

            driver.failSignIn();

            tryVerify(() => screen.alert() === "Couldn't open your browser. Try again, or paste an API key instead.");
            compare(screen.dialog().Accessible.name, "Set Up AI");
            verify(screen.named("Paste an API Key").enabled);
        }

        function test_theKeyOfASignInIsExplainedAndSaved(): void {
            screen.open();
            mouseClick(screen.named("Sign in with OpenRouter"));

            driver.finishSignIn("sk-or-new");

            const alert = screen.expectNamed("Your API Key Is Stored in the Keychain");
            tryVerify(() => screen.dialog().Accessible.description === "Vantrel stores your API key in the macOS Keychain, Apple's encrypted credential store. Your Mac may ask for your login password to allow this. If it does, choose \"Always Allow\" so it won't ask again.");
            compare(driver.storedKey("openRouter"), "");
            keyClick(Qt.Key_Return);

            tryVerify(() => driver.storedKey("openRouter") === "sk-or-new");
            screen.expectNamed("Ready: using Gemini 3.8 Flash via OpenRouter");
            compare(screen.dialog().Accessible.name, "Ready: using Gemini 3.8 Flash via OpenRouter");
            screen.verifyTexts(["You can change the provider or model any time in Settings.", "New OpenRouter accounts need credits before the first review."]);
            mouseClick(screen.named("Add OpenRouter credits →"));
            compare(driver.openedPages().length, 1);
            verify(screen.named("Done").activeFocus === false);
            mouseClick(screen.named("Done"));
            compare(screen.setup, null);
        }

        function test_aKeyThatCannotBeSavedCanBeSavedAgain(): void {
            driver.recordShownKeychainNotice();
            screen.open();
            mouseClick(screen.named("Sign in with OpenRouter"));
            driver.refuseKeyChange();

            driver.finishSignIn("sk-or-new");

            tryVerify(() => screen.alert().startsWith("Couldn't save the API key: "));
            mouseClick(screen.named("Save the key again"));
            screen.expectNamed("Ready: using Gemini 3.8 Flash via OpenRouter");
            compare(driver.storedKey("openRouter"), "sk-or-new");
        }

        function test_aKeyIsPasted(): void {
            driver.recordShownKeychainNotice();
            screen.open();
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Return);

            screen.verifyTexts(["Paste an API Key", "Provider", "Get an OpenRouter key", "Model", "Save", "Back"]);
            compare(screen.named("Get an OpenRouter key").Accessible.description, "Opens in your browser");
            verify(screen.field("API key") !== undefined);
            screen.type("sk-pasted");
            keyClick(Qt.Key_Return);

            screen.expectNamed("Ready: using Gemini 3.8 Flash via OpenRouter");
            compare(driver.storedKey("openRouter"), "sk-pasted");
            keyClick(Qt.Key_Return);
            compare(screen.setup, null);
        }

        function test_openAISaysWhatItsKeysNeed(): void {
            screen.open();
            mouseClick(screen.named("Paste an API Key"));
            verify(screen.named("OpenAI keys only work after you add prepaid credit (at least $5) to your OpenAI account.") === null);

            mouseClick(screen.named("OpenAI"));

            screen.verifyTexts(["OpenAI keys only work after you add prepaid credit (at least $5) to your OpenAI account.", "Get an OpenAI key"]);
            mouseClick(screen.named("Get an OpenAI key"));
            compare(driver.openedPages().length, 1);
            compare(screen.named("Custom"), null);
        }

        function test_whatIsMissingIsSaidUnderTheForm(): void {
            screen.open();
            mouseClick(screen.named("Paste an API Key"));

            mouseClick(screen.named("Save"));
            compare(screen.alert(), "Paste your OpenRouter API key.");
            screen.setup.selectCustomModel("");
            screen.setup.apiKeyDraft = "sk";
            mouseClick(screen.named("Save"));

            compare(screen.alert(), "Enter a model ID.");
            mouseClick(screen.named("Back"));
            compare(screen.dialog().Accessible.name, "Set Up AI");
            compare(screen.alert(), "");
        }

        function openLocalModels(): void {
            screen.open();
            mouseClick(screen.named("Use a Local Model"));
        }

        function test_localServersAreLookedFor(): void {
            screen.openLocalModels();

            screen.verifyTexts(["Use a Local Model", "Vantrel talks to a model server running on this Mac, so nothing is sent over the internet.", "Looking for Ollama and LM Studio…", "Server", "Check Again", "Use This Model", "Back"]);
            compare(screen.named("Ollama").Accessible.description, "Not checked");
            compare(screen.named("Get Ollama"), null);
            compare(screen.named("Check Again").enabled, false);
            compare(screen.named("Use This Model").enabled, false);
        }

        function test_aLocalModelIsChosenAndUsed(): void {
            screen.openLocalModels();
            driver.answerLocalServers({
                ollama: ["llama3", "qwen3"],
                lmStudio: ["gemma"]
            });
            tryVerify(() => screen.named("Ollama").Accessible.description === "Running · 2 models");
            compare(screen.named("LM Studio").Accessible.description, "Running · 1 model");
            verify(screen.named("Ollama").Accessible.checked);
            compare(screen.named("Get LM Studio"), null);
            compare(screen.menu().displayText, "llama3");

            screen.all(Accessible.Grouping)[0].forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            verify(screen.named("LM Studio").Accessible.checked);
            compare(screen.menu().displayText, "gemma");
            mouseClick(screen.named("Ollama"));
            mouseClick(screen.menu());
            const list = screen.menu().popup.contentItem;
            tryVerify(() => list.count === 2 && list.itemAtIndex(1) !== null);
            list.itemAtIndex(1).Accessible.pressAction();
            compare(screen.menu().displayText, "qwen3");
            mouseClick(screen.named("Use This Model"));

            screen.expectNamed("Ready: using qwen3 via Ollama");
            compare(screen.named("New OpenRouter accounts need credits before the first review."), null);
        }

        function test_serversWithoutModelsCannotBeChosen(): void {
            screen.openLocalModels();

            driver.answerLocalServers({
                ollama: []
            });

            tryVerify(() => screen.named("Ollama").Accessible.description === "Running · no models installed");
            compare(screen.named("LM Studio").Accessible.description, "Not running");
            compare(screen.named("Ollama").enabled, false);
            compare(screen.named("LM Studio").enabled, false);
            compare(screen.named("Get Ollama"), null);
            screen.verifyTexts(["Start Ollama or LM Studio and download a model, then check again."]);
            mouseClick(screen.named("Get LM Studio"));
            compare(driver.openedPages().length, 1);
            mouseClick(screen.named("Use This Model"));
            compare(screen.alert(), "Choose a model first.");

            mouseClick(screen.named("Check Again"));
            screen.verifyTexts(["Looking for Ollama and LM Studio…"]);
            compare(screen.alert(), "");
        }

        function isFocusInSight(): bool {
            const item = window.Window.activeFocusItem;
            const top = item.mapToItem(window, 0, 0).y;
            return top >= 40 && top + item.height <= window.height;
        }

        function test_aLowWindowScrollsTheForm(): void {
            screen.open();
            window.height = 340;
            screen.named("Paste an API Key").Accessible.pressAction();
            screen.named("OpenAI").Accessible.pressAction();

            const save = screen.named("Save");
            const foot = save.mapToItem(window, 0, save.height);
            verify(foot.y < window.height);
            for (let i = 0; i < 12; ++i) {
                keyClick(Qt.Key_Tab);
                tryVerify(() => screen.isFocusInSight());
            }
        }
    }
}
