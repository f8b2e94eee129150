// Replaces the kept snapshots by what the screens look like now. `script/snapshots` runs it.

#include "ScreenSnapshots.h"
#include "platform/jobs/RunQueue.h"

#include <QGuiApplication>
#include <QQmlExtensionPlugin>

#include <cstdio>

Q_IMPORT_QML_PLUGIN(VantrelPlugin)

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    vantrel::RunQueue::interfaceThread();
    if (!vantrel::test::keepAll()) {
        std::fputs("the snapshots could not be written\n", stderr);
        return 1;
    }
    return 0;
}
