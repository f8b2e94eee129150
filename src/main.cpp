#include "app/OrbiskApp.h"
#include "git/GitEnvironment.h"
#include "platform/instance/ApplicationInstance.h"
#include "platform/jobs/RunQueue.h"
#include "platform/log/SystemLog.h"
#include "views/MainWindow.h"
#include "views/SystemAppearance.h"
#include "views/WindowActivation.h"

#include <QCommandLineParser>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>

#include <cstdio>
#include <optional>

#ifdef __GLIBC__
#include <malloc.h>
#endif
#ifdef VANTREL_HAS_WATCHDOG
#include "platform/watchdog/linux/InterfaceWatchdog.h"
#endif

Q_IMPORT_QML_PLUGIN(VantrelPlugin)

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int usageError = 2;

/// Whether OpenGL is there and drawn by a GPU. Without a context Qt would abort, and a processor
/// that imitates a GPU is far slower than Qt's own software renderer.
bool hasHardwareOpenGl()
{
    QOpenGLContext context;
    if (!context.create()) {
        return false;
    }
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!surface.isValid() || !context.makeCurrent(&surface)) {
        return false;
    }
    const QByteArray renderer(
        reinterpret_cast<const char *>(context.functions()->glGetString(GL_RENDERER)));
    context.doneCurrent();
    return !renderer.contains("llvmpipe") && !renderer.contains("softpipe") &&
           !renderer.contains("swrast");
}

/// What the command line asks for: a folder to open, or an exit status to end with at once.
struct Request
{
    QString folder{};
    std::optional<int> exitStatus{};
};

Request readArguments(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Reads the uncommitted changes of a git repository with the help of a language model."_s);
    const QCommandLineOption help({u"h"_s, u"help"_s}, u"Show this help."_s);
    const QCommandLineOption version({u"v"_s, u"version"_s}, u"Show the version."_s);
    parser.addOptions({help, version});
    parser.addPositionalArgument(u"FOLDER"_s, u"The repository to open."_s, u"[FOLDER]"_s);
    if (!parser.parse(arguments)) {
        std::fprintf(stderr, "vantrel: %s\n", qPrintable(parser.errorText()));
        return {{}, usageError};
    }
    if (parser.isSet(help)) {
        // The parser takes the name from an application, which is not made yet.
        const QString text = parser.helpText().replace(u"<executable_name>"_s, u"vantrel"_s);
        std::fputs(qPrintable(text), stdout);
        return {{}, 0};
    }
    if (parser.isSet(version)) {
        std::puts("vantrel " VANTREL_VERSION);
        return {{}, 0};
    }
    const QStringList folders = parser.positionalArguments();
    if (folders.size() > 1) {
        std::fputs("vantrel: only one folder can be opened\n", stderr);
        return {{}, usageError};
    }
    return {folders.value(0), std::nullopt};
}

/// Whether the person's own preferences, keys or sign-in are to be left alone, so that this start
/// is not for the application that runs.
bool isTrial()
{
    return !qEnvironmentVariableIsEmpty("VANTREL_KEYCHAIN_SERVICE") ||
           !qEnvironmentVariableIsEmpty("VANTREL_OPENROUTER_ADDRESS");
}

/// What a start with this folder asks for. Before Qt takes the desktop's words for itself.
vantrel::StartRequest startRequest(const QString &folder)
{
    vantrel::StartRequest request;
    if (!folder.isEmpty()) {
        request.folder = QUrl::fromLocalFile(QFileInfo(folder).absoluteFilePath());
    }
    request.activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    request.startupId = qEnvironmentVariable("DESKTOP_STARTUP_ID");
    return request;
}

/// Hands the request to the application that runs; nothing when that is this process.
std::optional<int> exitStatusOfStart(vantrel::ApplicationInstance &instance,
                                     const vantrel::StartRequest &request)
{
    using Start = vantrel::ApplicationInstance::Start;
    switch (instance.start(request)) {
    case Start::first:
        return std::nullopt;
    case Start::handedOver:
        return 0;
    case Start::unanswered:
        std::fputs("vantrel: the application runs already, but does not answer\n", stderr);
        return 1;
    }
    Q_UNREACHABLE();
}

/// The person's own places, but for a keychain service that a trial run names, so that it cannot
/// touch the person's keys.
vantrel::OrbiskApp::Places places()
{
    vantrel::OrbiskApp::Places places = vantrel::OrbiskApp::standardPlaces();
    const QString trialService = qEnvironmentVariable("VANTREL_KEYCHAIN_SERVICE");
    if (!trialService.isEmpty()) {
        places.keychainService = trialService;
    }
    const QUrl trialAddress(qEnvironmentVariable("VANTREL_OPENROUTER_ADDRESS"));
    if (trialAddress.isValid()) {
        places.openRouter = {trialAddress, trialAddress};
    }
    return places;
}

/// Lets the C library give large blocks back to the system as soon as they are freed. By default it
/// keeps blocks of the size of those that were freed before, and the texts of a large diff, of
/// which several live for a moment only, would count for ever.
void returnLargeBlocks()
{
#ifdef __GLIBC__
    constexpr int largeBlock = 512 * 1024;
    ::mallopt(M_MMAP_THRESHOLD, largeBlock);
#endif
}

QStringList argumentList(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return arguments;
}

int runApplication(int argc, char **argv, const vantrel::StartRequest &request)
{
    const QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"vantrel"_s);
    QGuiApplication::setApplicationDisplayName(u"Vantrel"_s);
    QGuiApplication::setDesktopFileName(u"com.orbisk.app"_s);
    vantrel::RunQueue::interfaceThread();
    const auto instance = vantrel::systemInstance();
    if (!isTrial()) {
        if (const auto exitStatus = exitStatusOfStart(*instance, request)) {
            return *exitStatus;
        }
    }
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND") && !hasHardwareOpenGl()) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }

    QQuickWindow *mainWindow = nullptr;
    vantrel::OrbiskApp::Desktop desktop;
    desktop.openURL = [](const QUrl &url) { return QDesktopServices::openUrl(url); };
    desktop.activateApp = [&mainWindow] { vantrel::activateWindow(*mainWindow); };
    vantrel::OrbiskApp app(places(), desktop);
    vantrel::SystemAppearance appearance(app.appearanceController());
    const vantrel::MainWindow window(app.rootViewModel(), appearance);
    mainWindow = window.window();
    if (mainWindow == nullptr) {
        std::fputs("vantrel: the window could not be made\n", stderr);
        return 1;
    }
    const auto openFolder = [&app](const vantrel::StartRequest &asked) {
        if (!asked.folder.isEmpty()) {
            app.rootViewModel().openFolderInTurn(asked.folder);
        }
    };
    openFolder(request);
    QObject::connect(instance.get(), &vantrel::ApplicationInstance::requested, mainWindow,
                     [&](const vantrel::StartRequest &asked) {
                         openFolder(asked);
                         vantrel::activateWindow(*mainWindow, asked);
                     });
#ifdef VANTREL_HAS_WATCHDOG
    std::optional<vantrel::InterfaceWatchdog> watchdog;
    if (qEnvironmentVariableIsSet("VANTREL_WATCHDOG")) {
        watchdog.emplace(qEnvironmentVariable("VANTREL_WATCHDOG"));
    }
#endif
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    vantrel::logToSystem();
    // Before a window system is needed, so that both work anywhere.
    const Request request = readArguments(argumentList(argc, argv));
    if (request.exitStatus) {
        return *request.exitStatus;
    }
    vantrel::pinGitEnvironment();
    returnLargeBlocks();
    return runApplication(argc, argv, startRequest(request.folder));
}
