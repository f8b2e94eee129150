import QtQuick
import QtTest
import Vantrel

Item {
    width: 640
    height: 640

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

        name: "Shortcuts"
        content: window

        function init(): void {
            failOnWarning(/.+/);
            window.width = 640;
            window.height = 640;
            window.setSource("qrc:/qt/qml/Vantrel/ShortcutsView.qml", {
                title: "Keyboard Shortcuts"
            });
            window.item.forceActiveFocus();
        }

        function list(): Item {
            return screen.all(Accessible.List)[0];
        }

        function test_keysAreListedBelowTheirPlaces(): void {
            const headings = screen.all(Accessible.Heading).map(item => item.Accessible.name);
            compare(headings.slice(0, 3), ["Everywhere", "Recent repositories", "List of files"]);
            verify(screen.named("F1: These shortcuts") !== null);
            verify(screen.named("Return: Open it") !== null);
        }

        function test_theListScrollsByKeysToItsEnds(): void {
            const top = screen.list().contentY;

            keyClick(Qt.Key_End);
            verify(screen.named("Escape: Back to the code") !== null);
            verify(screen.list().atYEnd);
            keyClick(Qt.Key_Home);
            compare(screen.list().contentY, top);
        }

        function test_escapeCloses(): void {
            closing.clear();

            keyClick(Qt.Key_Escape);

            compare(closing.count, 1);
        }

        function test_itHasACloseButtonAlone(): void {
            compare(screen.all(Accessible.Button).map(item => item.Accessible.name), ["Close"]);
        }
    }
}
