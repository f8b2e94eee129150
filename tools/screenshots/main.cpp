#include "Scene.h"

#include "platform/jobs/RunQueue.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>

#include <cstdio>
#include <optional>

Q_IMPORT_QML_PLUGIN(VantrelPlugin)

using namespace Qt::Literals::StringLiterals;
using vantrel::screenshots::Scene;

namespace {

constexpr int usageError = 2;
constexpr QSize defaultSize(1280, 824);

std::optional<QSize> sizeFrom(const QString &text)
{
    const QStringList parts = text.split(u'x');
    const QSize size(parts.value(0).toInt(), parts.value(1).toInt());
    return parts.size() == 2 && !size.isEmpty() ? std::optional(size) : std::nullopt;
}

int fail(int status, const QString &message)
{
    std::fprintf(stderr, "vantrel_screenshots: %s\n", qPrintable(message));
    return status;
}

bool save(const QString &state, vantrel::AppAppearance appearance, QSize size, const QString &path)
{
    Scene scene(appearance);
    const QImage picture = scene.picture(state, size);
    return !picture.isNull() && picture.save(path);
}

} // namespace

/// Draws named states of the screens, without a display and with sample data, into PNG files.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    vantrel::RunQueue::interfaceThread();

    QCommandLineParser parser;
    parser.setApplicationDescription(u"States: "_s + Scene::states().join(u", "_s) + u"."_s);
    parser.addHelpOption();
    const QCommandLineOption dark(u"dark"_s, u"The dark theme."_s);
    const QCommandLineOption sizeOption(u"size"_s, u"The size of the window."_s, u"WxH"_s);
    parser.addOptions({dark, sizeOption});
    parser.addPositionalArgument(u"OUTPUT_FOLDER"_s, u"Where the pictures go."_s);
    parser.addPositionalArgument(u"STATE"_s, u"What to draw; all by default."_s, u"[STATE...]"_s);
    parser.process(application);

    QStringList states = parser.positionalArguments();
    const auto size = parser.isSet(sizeOption) ? sizeFrom(parser.value(sizeOption)) : defaultSize;
    if (states.isEmpty() || !size) {
        return fail(usageError, u"see --help"_s);
    }
    const QDir folder(states.takeFirst());
    if (!folder.mkpath(u"."_s)) {
        return fail(1, u"cannot make "_s + folder.path());
    }
    for (const QString &state : std::as_const(states)) {
        if (!Scene::states().contains(state)) {
            return fail(usageError, u"no state is named "_s + state);
        }
    }

    const bool isDark = parser.isSet(dark);
    const auto appearance = isDark ? vantrel::AppAppearance::dark : vantrel::AppAppearance::light;
    for (const QString &state : states.isEmpty() ? Scene::states() : states) {
        const QString path = folder.filePath(state + (isDark ? u"-dark.png"_s : u"-light.png"_s));
        if (!save(state, appearance, *size, path)) {
            return fail(1, u"cannot draw "_s + path);
        }
    }
    return 0;
}
