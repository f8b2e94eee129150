import QtQuick
import QtTest
import Vantrel

Item {
    width: 520
    height: 400

    Loader {
        id: window

        focus: true
    }

    SignalSpy {
        id: closing

        target: window.item
        signalName: "closed"
    }

    ScreenCase {
        id: screen

        readonly property FeedSoftwareUpdater updater: driver.root === null ? null : driver.root.softwareUpdater

        name: "UpdateWindow"
        content: window
        isUpdatable: true

        function showMainWindow(): void {
            window.width = 520;
            window.height = 400;
            window.setSource("qrc:/qt/qml/Vantrel/UpdateView.qml", {
                updater: driver.root.softwareUpdater,
                title: "Software Update",
                focus: true
            });
            closing.clear();
            screen.updater.checkForUpdates();
        }

        function offer(notes: string): void {
            driver.offerUpdate("0.2.0", notes);
            screen.expectNamed("Vantrel 0.2.0 is available");
        }

        function buttons(): var {
            return screen.all(Accessible.Button).map(item => item.Accessible.name).filter(name => name !== "Close" || screen.buttonCount("Close") > 1);
        }

        /// The title bar has one of its own.
        function buttonCount(name: string): int {
            return screen.all(Accessible.Button).filter(item => item.Accessible.name === name).length;
        }

        function test_aCheckShowsThatItIsUnderWay(): void {
            verify(screen.named("Checking for updates…") !== null);
            compare(screen.buttons(), ["Cancel"]);
        }

        function test_theNewestVersionSaysSo(): void {
            driver.offerUpdate("0.1.0", "");

            screen.expectNamed("Vantrel is up to date");
            verify(screen.named("Version 0.1.0 is the newest.") !== null);
            compare(screen.buttonCount("Close"), 2);
        }

        function test_aNewerVersionShowsWhatIsNew(): void {
            screen.offer("**Calmer** than `before`");

            verify(screen.named("You have version 0.1.0. The download is 5.2 MB.") !== null);
            verify(screen.named("What's new") !== null);
            verify(screen.named("Calmer than before") !== null);
            compare(screen.buttons(), ["Not Now", "Download"]);
        }

        function test_aVersionWithoutNotesSaysSo(): void {
            screen.offer("");

            verify(screen.named("No notes came with this version.") !== null);
        }

        function test_notesFetchNothing(): void {
            const address = driver.temptingAddress();

            screen.offer(`<img src='${address}'> ![a](${address}) *b*`);

            screen.expectNamed(`<img src='${address}'> a (${address}) b`);
            grabImage(window);
            grabImage(window);
            compare(driver.isTempted(), false);
        }

        function test_longNotesScrollByKeys(): void {
            screen.offer("line\n\n".repeat(200));
            const notes = Array.from(screen.named("What's new").children).find(item => item.contentY !== undefined);

            notes.forceActiveFocus();
            keyClick(Qt.Key_Down);

            tryVerify(() => notes.contentY > 0);
        }

        function test_aDownloadShowsHowFarItIs(): void {
            driver.setPackagePart(0.5);
            screen.offer("");

            mouseClick(screen.named("Download"));

            const bar = screen.expectNamed("Downloading Vantrel 0.2.0…");
            verify(bar !== null);
            screen.expectNamed("2.6 MB of 5.2 MB");
            compare(screen.all(Accessible.ProgressBar)[0].Accessible.description, "2.6 MB of 5.2 MB");
            compare(screen.buttons(), ["Cancel"]);
        }

        function test_aDownloadIsHandedToTheInstallerWhenAskedFor(): void {
            screen.offer("");
            keyClick(Qt.Key_Return);
            screen.expectNamed("Vantrel 0.2.0 is ready to install");
            compare(driver.openedFiles(), []);

            screen.named("Open Installer").Accessible.pressAction();
            screen.named("Show in Folder").Accessible.pressAction();

            compare(driver.openedFiles(), ["vantrel-0.2.deb", "updates"]);
        }

        function test_anInstallerThatDoesNotOpenIsNamedWithThePackage(): void {
            driver.refuseFiles();
            screen.offer("");
            keyClick(Qt.Key_Return);
            screen.expectNamed("Vantrel 0.2.0 is ready to install");

            keyClick(Qt.Key_Return);

            tryVerify(() => screen.all(Accessible.AlertMessage).length === 1);
            verify(/^Couldn't open your system's installer\. The package is .*\/updates\/vantrel-0\.2\.deb$/.test(screen.all(Accessible.AlertMessage)[0].Accessible.name));
        }

        function test_aFailureIsOneSentenceAndCanBeTriedAgain(): void {
            driver.refuseUpdates(404);
            screen.expectNamed("Couldn't check for updates");
            screen.expectNamed("The update server had nothing to give (status 404). Try again later.");
            verify(screen.named("Try Again").activeFocus);

            driver.offerUpdate("0.2.0", "");
            keyClick(Qt.Key_Return);

            screen.expectNamed("Vantrel 0.2.0 is available");
            compare(screen.all(Accessible.AlertMessage), []);
        }

        function test_theKeyboardBeginsOnTheWayOn_data(): var {
            return [
                { tag: "up to date", answer: () => driver.offerUpdate("0.1.0", ""), button: "Close" },
                { tag: "available", answer: () => driver.offerUpdate("0.2.0", ""), button: "Download" },
                { tag: "failed", answer: () => driver.refuseUpdates(500), button: "Try Again" }
            ];
        }

        function test_theKeyboardBeginsOnTheWayOn(data: var): void {
            data.answer();

            tryVerify(() => screen.all(Accessible.Button).some(item => item.activeFocus && item.Accessible.name === data.button));
        }

        function test_escapeAndTheButtonsClose_data(): var {
            return [
                { tag: "Escape", close: () => keyClick(Qt.Key_Escape) },
                { tag: "Not Now", close: () => mouseClick(screen.named("Not Now")) }
            ];
        }

        function test_escapeAndTheButtonsClose(data: var): void {
            screen.offer("");

            data.close();

            compare(closing.count, 1);
        }
    }
}
