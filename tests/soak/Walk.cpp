#include "Walk.h"

#include "WalkRules.h"
#include "desktop/Keyboard.h"
#include "persistence/RecentReposStore.h"
#include "platform/UserDefaults.h"
#include "support/ScriptedServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Where a model server of this machine is looked for, so that the setup finds the provider.
constexpr int providerPort = 11'434;

/// Far more than anything here takes.
constexpr auto limit = 60s;

const QString mainTitle = u"Reviewer"_s;
const QString key = u"sk-of-the-walk-at-random"_s;

/// In place of the desktop's program that opens pages: a person who approves, declines, or does
/// nothing, in turn.
const QByteArray browser = R"(#!/usr/bin/env python3
import os, sys, urllib.parse, urllib.request
turn_file = os.path.join(os.path.dirname(sys.argv[0]), 'turn')
turn = int(open(turn_file).read()) if os.path.exists(turn_file) else 0
open(turn_file, 'w').write(str(turn + 1))
asked = urllib.parse.parse_qs(urllib.parse.urlsplit(sys.argv[1]).query)
if 'callback_url' in asked and turn % 3 < 2:
    try:
        urllib.request.urlopen(asked['callback_url'][0] + ('?code=code-1', '?error=denied')[turn % 3])
    except OSError:
        pass
)";

const ShownItem *find(const QList<ShownItem> &items, const QString &role, const QString &name)
{
    const auto found = std::find_if(items.cbegin(), items.cend(), [&](const ShownItem &item) {
        return item.role == role && item.name == name;
    });
    return found == items.cend() ? nullptr : &*found;
}

/// Ends the application, or hides its only window: for the end of the walk.
bool isEnding(const ShownItem &item)
{
    return QStringList{u"Quit Vantrel"_s, u"Minimise"_s, u"Close"_s}.contains(item.name);
}

/// Lies over a window, which is closed by Escape.
bool liesOver(const ShownItem &item)
{
    return item.role == "dialog"_L1 || item.role == "popup menu"_L1;
}

/// Windows come and go, so it may fail.
void control(const QStringList &arguments)
{
    static_cast<void>(vantrel::test::run(u"xdotool"_s, arguments));
}

} // namespace

Walk::Walk(const Settings &settings)
    : m_settings(settings)
    , m_chance(settings.seed)
    , m_watchdogFile(u"%1/watchdog-%2.log"_s.arg(settings.logFolder).arg(settings.seed))
    , m_watchdog(m_watchdogFile)
{
    QDir().mkpath(m_settings.logFolder);
    m_log.setFileName(u"%1/steps-%2.log"_s.arg(m_settings.logFolder).arg(m_settings.seed));
    if (!m_log.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        throw std::runtime_error(qPrintable(m_log.errorString()));
    }
    for (int i = 0; i < 3; ++i) {
        m_repositories.append(std::make_shared<ChangingRepository>());
    }
    // Answers every exchange of a code with a key.
    if (!m_signInSite.listen(QHostAddress::LocalHost)) {
        throw std::runtime_error(qPrintable(m_signInSite.errorString()));
    }
    QObject::connect(&m_signInSite, &QTcpServer::newConnection, [this] {
        QTcpSocket *const peer = m_signInSite.nextPendingConnection();
        QObject::connect(peer, &QTcpSocket::disconnected, peer, &QObject::deleteLater);
        QObject::connect(peer, &QTcpSocket::readyRead, [peer] {
            peer->readAll();
            peer->write(httpAnswer(200, R"({"key": "sk-of-the-walk-at-random"})"));
            peer->disconnectFromHost();
        });
    });
}

Walk::~Walk() = default;

void Walk::run()
{
    m_time.start();
    try {
        start();
        while (!isOver()) {
            if (m_step % m_settings.stepsBetweenQuietPoints == 0) {
                beQuiet();
            }
            ++m_step;
            step();
            if (!checkApplication()) {
                return;
            }
        }
        beQuiet();
        if (checkApplication()) {
            judgeEnd(m_desktop.quit());
            judgeQuietPoints();
        }
    } catch (const std::exception &exception) {
        // What the wait in vain found instead, or a crash that was the reason.
        checkApplication();
        find(QString::fromUtf8(exception.what()));
    }
}

bool Walk::isOver() const
{
    return m_settings.steps > 0 ? m_step >= m_settings.steps : seconds() >= m_settings.minutes * 60;
}

void Walk::start()
{
    Desktop::startKeyring();
    restartProvider();
    m_desktop.writePreferences(u"http://localhost:%1/v1"_s.arg(providerPort));
    RecentReposStore recents(UserDefaults(m_desktop.folder() + u"/com.orbisk.app"_s),
                             u"recentRepos"_s, 10);
    for (const auto &repository : m_repositories) {
        recents.record(QDir(repository->path()).dirName(), repository->path());
    }
    QDir(m_folder.path()).mkdir(u"bin"_s);
    QFile program(m_folder.filePath(u"bin/xdg-open"_s));
    if (!program.open(QIODevice::WriteOnly) || program.write(browser) < 0) {
        throw std::runtime_error(qPrintable(program.errorString()));
    }
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    program.close();

    QFile::remove(m_watchdogFile);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, m_folder.path() + u"/bin:"_s + environment.value(u"PATH"_s));
    environment.insert(u"LD_PRELOAD"_s, QStringLiteral(LOOPBACK_ONLY));
    environment.insert(u"VANTREL_WATCHDOG"_s, m_watchdogFile);
    environment.insert(u"VANTREL_OPENROUTER_ADDRESS"_s,
                       u"http://127.0.0.1:%1"_s.arg(m_signInSite.serverPort()));
    m_desktop.start({m_repositories.first()->path()}, environment);
    // What is made at the first use only is there before the first quiet point.
    for (const QString &shortcut : {u"ctrl+o"_s, u"ctrl+comma"_s, u"F1"_s}) {
        pressKey(shortcut);
        static_cast<void>(goHome());
    }
}

void Walk::step()
{
    struct Kind
    {
        QString name{};
        int weight = 0;
        void (Walk::*take)() = nullptr;
    };
    static const QList<Kind> kinds{
        {u"control"_s, 34, &Walk::useControl},
        {u"key"_s, 24, &Walk::pressRandomKey},
        {u"text"_s, 6, &Walk::typeIntoField},
        {u"question"_s, 6, &Walk::askQuestion},
        {u"window size"_s, 3, &Walk::resizeWindow},
        {u"repository change"_s, 12, &Walk::changeRepository},
        {u"recent repository"_s, 8, &Walk::openRecent},
        {u"settings"_s, 3, &Walk::openSettings},
        {u"sample provider"_s, 2, &Walk::chooseSampleAgain},
        {u"new provider"_s, 2, &Walk::restartProvider},
    };
    int sum = 0;
    for (const Kind &kind : kinds) {
        sum += kind.weight;
    }
    int place = m_chance.below(sum);
    for (const Kind &kind : kinds) {
        if (place < kind.weight) {
            ++m_stepCounts[kind.name];
            log(u"%1 %2"_s.arg(m_step).arg(kind.name));
            (this->*kind.take)();
            return;
        }
        place -= kind.weight;
    }
}

void Walk::useControl()
{
    const auto items = read();
    if (!items) {
        return;
    }
    static const QStringList roles{u"push button"_s, u"link"_s,      u"radio button"_s,
                                   u"list item"_s,   u"menu item"_s, u"toggle button"_s,
                                   u"check box"_s,   u"combo box"_s, u"text"_s,
                                   u"button"_s,      u"page tab"_s,  u"table cell"_s};
    Items controls;
    std::copy_if(items->cbegin(), items->cend(), std::back_inserter(controls),
                 [](const ShownItem &item) {
                     return item.isEnabled() && roles.contains(item.role) && !isEnding(item);
                 });
    if (controls.isEmpty()) {
        return;
    }
    const ShownItem item = m_chance.of(controls);
    const QStringList actions = m_desktop.reader().actions(item);
    if (!actions.isEmpty()) {
        const QString action = m_chance.of(actions);
        log(u"    "_s + action + u' ' + item.role + u" \""_s + item.name + u'"');
        static_cast<void>(m_desktop.reader().act(item, action));
    }
}

void Walk::pressRandomKey()
{
    static const QStringList keys{
        u"Tab"_s,    u"shift+Tab"_s,  u"Up"_s,         u"Down"_s,      u"Left"_s,
        u"Right"_s,  u"Prior"_s,      u"Next"_s,       u"Home"_s,      u"End"_s,
        u"Return"_s, u"Return"_s,     u"Escape"_s,     u"space"_s,     u"alt+Left"_s,
        u"F1"_s,     u"F10"_s,        u"ctrl+comma"_s, u"ctrl+o"_s,    u"j"_s,
        u"k"_s,      u"shift+Down"_s, u"shift+Next"_s, u"shift+End"_s, u"ctrl+a"_s,
        u"ctrl+c"_s, u"alt+Down"_s,   u"alt+Up"_s,     u"BackSpace"_s, u"shift+Return"_s};
    const auto items = read();
    const QString chosen = m_chance.of(keys);
    const bool wouldEnd =
        items && std::any_of(items->cbegin(), items->cend(), [](const ShownItem &item) {
            return (item.isFocused() || item.isSelected()) && isEnding(item);
        });
    const bool isUse = QStringList{u"Return"_s, u"space"_s, u"shift+Return"_s}.contains(chosen);
    if (!items || (wouldEnd && isUse)) {
        return;
    }
    activateSomeWindow(*items);
    const int times = m_chance.oneIn(4) ? 1 + m_chance.below(12) : 1;
    log(u"    %1 × %2"_s.arg(chosen).arg(isUse ? 1 : times));
    for (int i = 0; i < (isUse ? 1 : times); ++i) {
        pressKey(chosen);
    }
}

void Walk::typeIntoField()
{
    const auto items = read();
    if (!items) {
        return;
    }
    Items fields;
    std::copy_if(items->cbegin(), items->cend(), std::back_inserter(fields),
                 [](const ShownItem &item) { return item.isEditable() && item.isEnabled(); });
    if (fields.isEmpty()) {
        return;
    }
    const ShownItem field = m_chance.of(fields);
    static const QStringList texts{
        u"http://localhost:11434/v1"_s, u"sample"_s,          u""_s, u"no address"_s,
        u"http://localhost:1/v1"_s,     u"What is it for? "_s};
    const bool isKey = field.name.contains("key"_L1) || field.role == "password text"_L1;
    fill(field, isKey ? key : m_chance.of(texts));
    if (m_chance.oneIn(2)) {
        pressKey(u"Return"_s);
    }
}

void Walk::askQuestion()
{
    const auto items = read();
    const ShownItem *const field =
        items ? test::find(*items, u"text"_s, u"Ask a follow-up…"_s) : nullptr;
    if (field != nullptr) {
        fill(*field, u"Is this right, number %1?"_s.arg(m_step));
        pressKey(u"Return"_s);
    }
}

void Walk::resizeWindow()
{
    const int width = 900 + m_chance.below(540);
    const int height = 600 + m_chance.below(360);
    log(u"    %1 × %2"_s.arg(width).arg(height));
    control({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Reviewer$"_s, u"windowsize"_s,
             QString::number(width), QString::number(height)});
}

void Walk::changeRepository()
{
    const auto &repository = m_chance.of(m_repositories);
    const QString foreign = repository->foreignChange();
    if (!foreign.isEmpty()) {
        find(u"the application wrote to a repository: "_s + foreign);
    }
    log(u"    "_s + repository->change(m_chance));
}

void Walk::restartProvider()
{
    if (m_provider) {
        for (const QJsonObject &request : m_provider->requests()) {
            ++m_served[request["fault"_L1].toString()];
        }
        m_provider->kill();
        m_provider.reset();
    }
    const QString seed = QString::number(m_settings.seed + m_providerCount++);
    m_provider.emplace(QStringList{u"--port"_s, QString::number(providerPort), u"--delay-ms"_s,
                                   QString::number(m_chance.below(3) * 10), u"--faults"_s, seed});
    log(u"    faults by "_s + seed);
}

void Walk::openSettings()
{
    if (const auto items = read()) {
        activateSomeWindow(*items);
        pressKey(u"ctrl+comma"_s);
    }
}

void Walk::chooseSampleAgain()
{
    if (!goHome()) {
        return;
    }
    activateWindow(mainTitle);
    pressKey(u"ctrl+comma"_s);
    auto items = readUntil(
        [](const Items &shown) { return test::find(shown, u"frame"_s, u"Settings"_s) != nullptr; });
    if (!items) {
        find(u"the settings do not open"_s);
        return;
    }
    if (tryPress(*items, u"push button"_s, u"Continue"_s)) {
        items = read();
    }
    if (items && tryPress(*items, u"radio button"_s, u"Custom"_s)) {
        items = readUntil([](const Items &shown) {
            return test::find(shown, u"text"_s, u"Base URL"_s) != nullptr;
        });
    }
    for (const auto &[name, text] : {std::pair(u"Base URL"_s, u"http://localhost:11434/v1"_s),
                                     std::pair(u"Model"_s, u"sample"_s)}) {
        if (const ShownItem *const field = items ? test::find(*items, u"text"_s, name) : nullptr) {
            fill(*field, text);
        }
    }
    if (items) {
        static_cast<void>(tryPress(*items, u"push button"_s, u"Save"_s));
    }
}

void Walk::openRecent()
{
    if (!goHome()) {
        return;
    }
    const auto items = read();
    Items recents;
    if (items) {
        std::copy_if(items->cbegin(), items->cend(), std::back_inserter(recents),
                     [](const ShownItem &item) { return item.role == "list item"_L1; });
    }
    if (!recents.isEmpty()) {
        static_cast<void>(m_desktop.reader().act(m_chance.of(recents), u"Press"_s));
        // Half of the time not waiting, so that the next step meets a list that is loading.
        if (m_chance.oneIn(2)) {
            static_cast<void>(readUntil([](const Items &shown) {
                return test::find(shown, u"push button"_s, u"All projects"_s) != nullptr &&
                       std::any_of(shown.cbegin(), shown.cend(), [](const ShownItem &item) {
                           return item.role == "list item"_L1;
                       });
            }));
        }
    }
}

void Walk::beQuiet()
{
    restartProvider(); // Which ends whatever waits for an answer.
    if (!goHome()) {
        return;
    }
    const pid_t process = m_desktop.application().id();
    ProcessReading reading;
    const QDeadlineTimer deadline(limit);
    do {
        reading = readProcess(process);
        static_cast<void>(read());
    } while (!deadline.hasExpired() && m_desktop.application().hasEnded() == false &&
             (reading.connections > 0 || !reading.children.isEmpty()));
    if (deadline.hasExpired()) {
        find(u"on the picker there are still %1 connections and the programs: %2"_s
                 .arg(reading.connections)
                 .arg(reading.children.join(u", "_s)));
    }
    m_watchdog.read();
    const int heapCount = m_watchdog.heapCount();
    static_cast<void>(readUntil([&](const Items &) {
        m_watchdog.read();
        return m_watchdog.heapCount() > heapCount + 1;
    }));
    // In memory their texts are UTF-16, while nearly all of the file is one byte for a character.
    const qint64 stored = QFileInfo(m_desktop.folder() + u"/com.orbisk.app/chatHistory"_s).size();
    const QuietPoint point{m_step, seconds(), m_watchdog.heap(), 2 * stored, readProcess(process)};
    m_quietPoints.append(point);
    log(u"quiet: %1 s, resident %2 KB, heap %3 KB, conversations %4 KB, %5 descriptors, %6 threads"_s
            .arg(point.seconds)
            .arg(point.reading.residentBytes / 1024)
            .arg(point.heap / 1024)
            .arg(point.conversations / 1024)
            .arg(point.reading.descriptors.size())
            .arg(point.reading.threads));
}

bool Walk::goHome()
{
    const QDeadlineTimer deadline(limit);
    std::optional<Items> items;
    while (!deadline.hasExpired()) {
        items = read();
        if (items && takeStepHome(*items)) {
            return true;
        }
        if (m_desktop.application().hasEnded()) {
            return false;
        }
    }
    // Nothing that follows would be of a walk at random.
    throw std::runtime_error(
        (u"no way leads back to the picker from:\n"_s + (items ? listing(*items) : u"nothing"_s))
            .toStdString());
}

/// Whether it is there already.
bool Walk::takeStepHome(const Items &items)
{
    for (const ShownItem &item : items) {
        if (item.role == "frame"_L1 && item.name != mainTitle) {
            control({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u'^' + item.name + u'$',
                     u"windowfocus"_s});
            escapeFrom(items,
                       std::find_if(items.cbegin(), items.cend(), liesOver) - items.cbegin());
            pressKey(u"ctrl+w"_s);
            return false;
        }
    }
    activateWindow(mainTitle);
    const auto open = std::find_if(items.cbegin(), items.cend(), liesOver);
    if (open != items.cend()) {
        for (const QString &name :
             {u"Cancel"_s, u"Not Now"_s, u"Done"_s, u"Continue"_s, u"Back"_s}) {
            // Escape must do as well.
            if (m_chance.oneIn(2) && tryPress(items, u"push button"_s, name)) {
                return false;
            }
        }
        escapeFrom(items, open - items.cbegin());
        return false;
    }
    if (tryPress(items, u"push button"_s, u"All files"_s) ||
        tryPress(items, u"push button"_s, u"All projects"_s)) {
        return false;
    }
    if (test::find(items, u"push button"_s, u"Choose Folder…"_s) != nullptr) {
        return true;
    }
    pressKey(u"Escape"_s);
    return false;
}

/// As somebody does whose screen reader has wandered off: back into what lies over the screen, and
/// out.
void Walk::escapeFrom(const Items &items, qsizetype place)
{
    for (const ShownItem &item : items.sliced(place)) {
        if (m_desktop.reader().act(item, u"SetFocus"_s)) {
            break;
        }
    }
    pressKey(u"Escape"_s);
}

std::optional<QList<ShownItem>> Walk::read()
{
    // The reading may meet a change; the sign-in's site is served between.
    std::optional<Items> items;
    for (int i = 0; i < 20 && !items; ++i) {
        QCoreApplication::processEvents();
        items = m_desktop.reader().read();
    }
    if (items) {
        noteScreen(*items);
    }
    return items;
}

std::optional<QList<ShownItem>> Walk::readUntil(const std::function<bool(const Items &)> &isSo)
{
    const QDeadlineTimer deadline(limit / 4);
    while (!deadline.hasExpired() && !m_desktop.application().hasEnded()) {
        auto items = read();
        if (items && isSo(*items)) {
            return items;
        }
    }
    return std::nullopt;
}

bool Walk::tryPress(const Items &items, const QString &role, const QString &name)
{
    const ShownItem *const item = test::find(items, role, name);
    return item != nullptr && item->isEnabled() && m_desktop.reader().act(*item, u"Press"_s);
}

void Walk::fill(const ShownItem &field, const QString &text)
{
    log(u"    \""_s + text + u"\" into \""_s + field.name + u'"');
    static_cast<void>(m_desktop.reader().act(field, u"SetFocus"_s));
    pressKey(u"ctrl+a"_s);
    pressKey(u"BackSpace"_s);
    if (!text.isEmpty()) {
        typeText(text);
    }
}

/// There is no window manager that would do so.
void Walk::activateSomeWindow(const Items &items)
{
    QStringList titles;
    for (const ShownItem &item : items) {
        if (item.role == "frame"_L1) {
            titles.append(item.name);
        }
    }
    if (!titles.isEmpty()) {
        control({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u'^' + m_chance.of(titles) + u'$',
                 u"windowfocus"_s});
    }
}

void Walk::noteScreen(const Items &items)
{
    for (const ShownItem &item : items) {
        if ((item.role == "frame"_L1 && item.name != mainTitle) || item.role == "dialog"_L1) {
            ++m_screens[item.name];
        }
    }
    for (const auto &[name, screen] : {std::pair(u"All files"_s, u"changes of a file"_s),
                                       std::pair(u"All projects"_s, u"list of files"_s),
                                       std::pair(u"Choose Folder…"_s, u"picker"_s)}) {
        m_screens[screen] += test::find(items, u"push button"_s, name) == nullptr ? 0 : 1;
    }
}

bool Walk::checkApplication()
{
    m_watchdog.read();
    for (; m_stretchesRead < m_watchdog.stretches().size(); ++m_stretchesRead) {
        const Stretch &stretch = m_watchdog.stretches().at(m_stretchesRead);
        log(describe(stretch));
        if (isHang(stretch)) {
            find(describe(stretch));
        }
    }
    const QByteArray errors =
        m_desktop.isStarted() ? m_desktop.application().errorsSoFar() : QByteArray();
    const qsizetype end = errors.lastIndexOf('\n') + 1;
    for (const QByteArray &line : errors.first(end).sliced(m_errorsRead).split('\n')) {
        const QString text = QString::fromUtf8(line);
        ++m_errorLines[text];
        if (!isExpectedMessage(text)) {
            find(u"standard error: "_s + text);
        }
        if (text.contains(key)) {
            find(u"a key is in the log"_s);
        }
    }
    m_errorsRead = end;
    if (m_desktop.isStarted() && m_desktop.application().hasEnded() && !m_hasEnded) {
        m_hasEnded = true;
        const ProcessRun ended = m_desktop.application().waitForEnd();
        find(u"the application ended by itself with status %1, signal %2\n%3"_s.arg(ended.exitCode)
                 .arg(ended.signal)
                 .arg(m_watchdog.crash()));
    }
    return !m_hasEnded;
}

void Walk::judgeEnd(const ProcessRun &ended)
{
    if (ended.exitCode != 0) {
        find(u"the application ended with status %1, %2"_s.arg(ended.exitCode)
                 .arg(QString::fromUtf8(ended.errors.right(100))));
    }
    for (const auto &repository : std::as_const(m_repositories)) {
        const QString foreign = repository->foreignChange();
        if (!foreign.isEmpty()) {
            find(u"the application wrote to a repository: "_s + foreign);
        }
    }
}

void Walk::judgeQuietPoints()
{
    for (const QString &finding : findingsOf(m_quietPoints)) {
        find(finding);
    }
}

void Walk::find(const QString &finding)
{
    log(u"FINDING "_s + finding);
    m_findings.append(u"step %1: %2"_s.arg(m_step).arg(finding));
}

void Walk::log(const QString &line)
{
    m_log.write(u"%1 %2\n"_s.arg(seconds(), 8, 'f', 2).arg(line).toUtf8());
}

QString Walk::report() const
{
    QString text = u"seed %1, %2 steps in %3 s, %4 findings\n"_s.arg(m_settings.seed)
                       .arg(m_step)
                       .arg(seconds(), 0, 'f', 0)
                       .arg(m_findings.size());
    const auto table = [&text](const QString &title, const QMap<QString, int> &counts) {
        text += u'\n' + title + u'\n';
        for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
            text += u"%1  %2\n"_s.arg(it.value(), 8).arg(it.key());
        }
    };
    table(u"Steps"_s, m_stepCounts);
    table(u"Screens, as often as they were read"_s, m_screens);
    table(u"Requests by fault"_s, m_served);
    table(u"Lines on standard error"_s, m_errorLines);

    QList<Stretch> stretches = m_watchdog.stretches();
    std::sort(stretches.begin(), stretches.end(),
              [](const Stretch &one, const Stretch &other) { return one.own() > other.own(); });
    text += u"\nLongest stretches without an event\n"_s;
    for (const Stretch &stretch : stretches.first(qMin<qsizetype>(stretches.size(), 5))) {
        text += u"  "_s + describe(stretch).section(u'\n', 0, 0) + u'\n';
    }
    text +=
        u"\nQuiet points\n    step  seconds  resident KB   heap KB  conversations KB  descriptors  "
        "threads  children\n"_s;
    for (const QuietPoint &point : m_quietPoints) {
        text += u"%1 %2 %3 %4 %5 %6 %7 %8\n"_s.arg(point.step, 8)
                    .arg(point.seconds, 8, 'f', 0)
                    .arg(point.reading.residentBytes / 1024, 12)
                    .arg(point.heap / 1024, 9)
                    .arg(point.conversations / 1024, 17)
                    .arg(point.reading.descriptors.size(), 12)
                    .arg(point.reading.threads, 8)
                    .arg(point.reading.children.size(), 9);
    }
    if (!m_findings.isEmpty()) {
        text += u"\nFindings\n"_s + m_findings.join(u"\n\n"_s) + u'\n';
    }
    return text;
}

} // namespace vantrel::test
