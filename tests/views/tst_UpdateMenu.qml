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

        name: "UpdateMenu"
        content: window
        isUpdatable: true

        function test_theEntryBeginsACheck(): void {
            screen.openMenu();

            mouseClick(screen.menuEntry("Check for Updates…"));

            tryVerify(() => driver.root.softwareUpdater.isChecking);
        }

        function test_theEntryIsThereForTheKeyboard(): void {
            screen.openMenu();

            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);

            tryVerify(() => driver.root.softwareUpdater.isChecking);
        }

        function test_theEntryIsDisabledWhileACheckIsUnderWay(): void {
            driver.root.softwareUpdater.checkForUpdates();
            screen.openMenu();
            verify(!screen.menuEntry("Check for Updates…").enabled);

            driver.offerUpdate("0.1.0", "");

            tryVerify(() => screen.menuEntry("Check for Updates…").enabled);
        }
    }

    ScreenCase {
        name: "NoUpdateMenu"
        content: window

        function test_aBuildWithoutUpdatesHasNoEntry(): void {
            openMenu();

            compare(driver.root.softwareUpdater, null);
            compare(menuEntry("Check for Updates…"), null);
        }
    }
}
