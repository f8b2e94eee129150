import QtQuick
import QtTest
import Vantrel

/// Tests of the whole window's content: made anew for each test, found by accessible names.
TestCase {
    id: root

    required property Loader content

    property bool acknowledgesNotice: true

    /// The stored configuration can work, so that the setup does not open by itself.
    property bool isConfigured: true

    property bool isUpdatable: false

    /// The settings in place of the main window.
    property bool showsSettings: false

    when: windowShown

    function init(): void {
        root.failOnWarning(/.+/);
        Theme.reducesMotion = true;
        driver.isUpdatable = root.isUpdatable;
        driver.start(root.acknowledgesNotice);
        if (!root.showsSettings) {
            root.showMainWindow();
        }
    }

    function showMainWindow(): void {
        if (root.isConfigured) {
            driver.storeConfiguration("openRouter", "https://openrouter.ai/api/v1", "google/gemini-3.8-flash");
        }
        root.content.width = 1280;
        root.content.height = 824;
        root.content.setSource("qrc:/qt/qml/Vantrel/RootView.qml", {
            viewModel: driver.root
        });
    }

    /// As when their window is opened.
    function showSettings(): void {
        root.content.width = 640;
        root.content.height = 640;
        root.content.setSource("qrc:/qt/qml/Vantrel/SettingsView.qml", {
            viewModel: driver.root.settings,
            focus: true
        });
        driver.root.settings.reloadIfChanged();
        driver.root.settings.checkSavedKey();
    }

    function cleanup(): void {
        root.content.source = "";
    }

    function openFiles(hunkCounts: var): void {
        driver.openRepository();
        driver.answerFiles(hunkCounts);
        root.tryVerify(() => driver.root.fileList.hasLoaded);
    }

    function openDiff(hunkCounts: var): void {
        root.openFiles(hunkCounts);
        driver.root.fileList.openFile(0);
        root.tryVerify(() => driver.root.diff !== null && !driver.root.diff.isLoading);
    }

    /// All visible items of a role, from the top of the tree down.
    function all(role: int): var {
        const found = [];
        root.walk(root.content, item => {
            if (item.Accessible.role === role) {
                found.push(item);
            }
        });
        return found;
    }

    /// The visible item of this accessible name, or null.
    function named(name: string): Item {
        let found = null;
        root.walk(root.content, item => {
            if (found === null && item.Accessible.name === name) {
                found = item;
            }
        });
        return found;
    }

    function expectNamed(name: string): Item {
        root.tryVerify(() => root.named(name) !== null, 5000, name);
        return root.named(name);
    }

    function openMenu(): void {
        root.keyClick(Qt.Key_F10);
        root.tryVerify(() => root.menuEntry("Settings…") !== null);
    }

    /// The visible entry of the menu, or null. A popup's items lie beside the content, in the window's
    /// overlay.
    function menuEntry(name: string): Item {
        let top = root.content as Item;
        while (top.parent !== null) {
            top = top.parent;
        }
        let found = null;
        root.walk(top, item => {
            if (found === null && item.Accessible.role === Accessible.MenuItem && item.Accessible.name === name) {
                found = item;
            }
        });
        return found;
    }

    function walk(item: Item, visit: var): void {
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i];
            if (child.visible) {
                visit(child);
                root.walk(child, visit);
            }
        }
    }
}
