#include "ScreenSnapshots.h"

#include "Snapshot.h"
#include "screenshots/Scene.h"

#include <QPainter>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;
using screenshots::Scene;

namespace {

constexpr QSize usualSize(1280, 824);
constexpr QSize smallestSize(900, 600);
constexpr QSize largeSize(2560, 1440);

/// Zlib's most, since the files are kept for good.
constexpr int smallestFile = 0;

/// The picture with what differs in red, on a ground so faint that nothing else is seen first.
QImage marked(const QImage &picture, const QImage &marks)
{
    QImage result(picture.size(), QImage::Format_RGB32);
    result.fill(Qt::white);
    QPainter painter(&result);
    painter.setOpacity(0.4);
    painter.drawImage(0, 0, picture.convertToFormat(QImage::Format_Grayscale8));
    painter.drawImage(0, 0, marks.scaled(marks.size() * snapshotBlock));
    return result;
}

} // namespace

QString ScreenSnapshot::name() const
{
    const QString theme = appearance == AppAppearance::dark ? u"-dark"_s : u"-light"_s;
    return state + (sizeName.isEmpty() ? QString() : u'-' + sizeName) + theme;
}

QList<ScreenSnapshot> allScreenSnapshots()
{
    QList<ScreenSnapshot> screens;
    for (const QString &state : Scene::states()) {
        screens.append({state, AppAppearance::light, usualSize, {}});
        screens.append({state, AppAppearance::dark, usualSize, {}});
    }
    for (const QString &state : {u"picker-recents"_s, u"files-loaded"_s, u"diff-loaded"_s}) {
        screens.append({state, AppAppearance::light, smallestSize, u"900"_s});
        screens.append({state, AppAppearance::light, largeSize, u"2560"_s});
    }
    return screens;
}

QDir keptFolder()
{
    return QDir(QString::fromUtf8(KEPT_SNAPSHOTS));
}

QImage takePicture(const ScreenSnapshot &screen)
{
    Scene scene(screen.appearance);
    return scene.picture(screen.state, screen.size);
}

std::optional<QString> compareWithKept(const ScreenSnapshot &screen, const QImage &picture)
{
    const QImage kept(keptFolder().filePath(screen.fileName()));
    if (kept.isNull()) {
        return u"no picture of %1 is kept; script/snapshots keeps all"_s.arg(screen.name());
    }
    const auto difference = compareSnapshots(kept, snapshotOf(picture));
    if (!difference) {
        return std::nullopt;
    }
    const QDir folder(QString::fromUtf8(SNAPSHOT_DIFFERENCES));
    const QString actual = folder.filePath(screen.name() + u"-actual.png"_s);
    const QString marks = folder.filePath(screen.name() + u"-difference.png"_s);
    const bool isWritten = folder.mkpath(u"."_s) && picture.save(actual) &&
                           marked(picture, difference->marks).save(marks);
    return u"%1 %2; see %3 and %4%5"_s.arg(screen.name(), difference->sentence, actual, marks,
                                           isWritten ? QString() : u" (not written)"_s);
}

bool keepAll()
{
    QDir folder = keptFolder();
    if (!folder.mkpath(u"."_s)) {
        return false;
    }
    for (const QString &former : folder.entryList(QDir::Files)) {
        folder.remove(former);
    }
    for (const ScreenSnapshot &screen : allScreenSnapshots()) {
        const QImage snapshot = snapshotOf(takePicture(screen));
        if (!snapshot.save(folder.filePath(screen.fileName()), "png", smallestFile)) {
            return false;
        }
    }
    return true;
}

} // namespace vantrel::test
