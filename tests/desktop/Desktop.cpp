#include "Desktop.h"

#include "Keyboard.h"
#include "platform/UserDefaults.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDeadlineTimer>
#include <QDir>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Far more than anything here takes, even on a machine with other things to do.
constexpr auto limit = 60s;

/// The bus tells of some changes and not of others, so the screen is read again and again.
constexpr auto pulse = 20ms;

const ShownItem *find(const QList<ShownItem> &items, const Sought &sought)
{
    const auto found = std::find_if(items.cbegin(), items.cend(), sought.isIt);
    return found == items.cend() ? nullptr : &*found;
}

QString wordsFor(const QString &role, const QString &name)
{
    return role + u" \""_s + name + u'"';
}

} // namespace

Sought named(const QString &role, const QString &name)
{
    return {wordsFor(role, name),
            [=](const ShownItem &item) { return item.role == role && item.name == name; }};
}

Sought beginning(const QString &role, const QString &beginning)
{
    return {wordsFor(role, beginning + u'…'), [=](const ShownItem &item) {
                return item.role == role && item.name.startsWith(beginning);
            }};
}

Sought ending(const QString &role, const QString &ending)
{
    return {wordsFor(role, u'…' + ending),
            [=](const ShownItem &item) { return item.role == role && item.name.endsWith(ending); }};
}

Sought focused(const Sought &sought)
{
    return {u"the keyboard at "_s + sought.words,
            [=](const ShownItem &item) { return sought.isIt(item) && item.isFocused(); }};
}

Sought selected(const Sought &sought)
{
    return {sought.words + u" as the selected one"_s,
            [=](const ShownItem &item) { return sought.isIt(item) && item.isSelected(); }};
}

QProcessEnvironment Desktop::onDisplay(QProcessEnvironment environment) const
{
    environment.insert(u"XDG_CONFIG_HOME"_s, m_folder.path());
    if (!environment.contains(u"VANTREL_KEYCHAIN_SERVICE"_s)) {
        environment.insert(u"VANTREL_KEYCHAIN_SERVICE"_s, keychainService());
    }
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    environment.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    return environment;
}

void Desktop::start(const QStringList &arguments, const QProcessEnvironment &environment)
{
    m_application.emplace(QString::fromUtf8(VANTREL), arguments, onDisplay(environment));
    await({named(u"frame"_s, u"Reviewer"_s)});
    activateWindow(u"Reviewer"_s);
    await({{u"the active window"_s,
            [](const ShownItem &item) { return item.role == u"frame"_s && item.isActive(); }}});
}

ProcessRun Desktop::quit()
{
    pressKey(u"ctrl+q"_s);
    return application().waitForEnd(int(limit.count()));
}

void Desktop::startKeyring()
{
    // A second daemon beside the first may not find what that one has.
    if (QDBusConnection::sessionBus().interface()->isServiceRegistered(
            u"org.freedesktop.secrets"_s)) {
        return;
    }
    QDir().mkpath(qEnvironmentVariable("XDG_DATA_HOME") + u"/keyrings"_s);
    QProcess daemon;
    daemon.start(u"gnome-keyring-daemon"_s, {u"--unlock"_s, u"--components=secrets"_s});
    daemon.write("test");
    daemon.closeWriteChannel();
    ASSERT_TRUE(daemon.waitForFinished());
    ASSERT_EQ(QProcess::execute(u"gdbus"_s, {u"wait"_s, u"--session"_s, u"--timeout"_s, u"60"_s,
                                             u"org.freedesktop.secrets"_s}),
              0);
}

void Desktop::writePreferences(const QString &baseURL) const
{
    UserDefaults defaults(folder() + u"/com.orbisk.app"_s);
    ASSERT_TRUE(defaults.setText(u"aiProvider"_s, u"custom"_s));
    ASSERT_TRUE(defaults.setText(u"aiBaseURL"_s, baseURL));
    ASSERT_TRUE(defaults.setText(u"aiModel"_s, u"sample"_s));
    ASSERT_TRUE(defaults.setBoolean(u"keychainAccessNotice.hasAcknowledged"_s, true));
}

QList<ShownItem> Desktop::await(const QList<Sought> &sought)
{
    QStringList words;
    for (const Sought &one : sought) {
        words.append(one.words);
    }
    const QList<ShownItem> items =
        awaitScreen(words.join(u", "_s), [&](const QList<ShownItem> &shown) {
            return std::all_of(sought.cbegin(), sought.cend(),
                               [&](const Sought &one) { return find(shown, one) != nullptr; });
        });
    record();
    return items;
}

void Desktop::record()
{
    const QString folder = qEnvironmentVariable("VANTREL_RECORDING");
    if (folder.isEmpty()) {
        return;
    }
    const auto *const test = testing::UnitTest::GetInstance()->current_test_info();
    const QString name = QString::fromUtf8(test->test_suite_name()) + u'.' +
                         QString::fromUtf8(test->name()) +
                         u"-%1.png"_s.arg(++m_recorded, 2, 10, QChar(u'0'));
    EXPECT_EQ(
        QProcess::execute(u"import"_s, {u"-window"_s, u"root"_s, QDir(folder).filePath(name)}), 0);
}

void Desktop::awaitText(const QString &fieldName, const QString &text)
{
    await(
        {{wordsFor(u"text"_s, fieldName) + u" with \""_s + text + u'"', [&](const ShownItem &item) {
              return item.role == u"text"_s && item.name == fieldName &&
                     m_reader.textIn(item) == text;
          }}});
}

void Desktop::awaitErrors(const QByteArray &errors)
{
    m_awaitedErrors += errors;
    awaitThat(u"words to standard error: "_s + QString::fromUtf8(errors),
              [&] { return m_application->errorsSoFar() == m_awaitedErrors; });
}

void Desktop::awaitThat(const QString &what, const std::function<bool()> &isSo)
{
    awaitScreen(what, [&](const QList<ShownItem> &) { return isSo(); });
}

QList<ShownItem> Desktop::awaitScreen(const QString &what, const Reached &isReached)
{
    const QDeadlineTimer deadline(limit);
    QTimer alarm;
    alarm.start(pulse);
    QList<ShownItem> shown;
    while (!deadline.hasExpired()) {
        if (const auto items = m_reader.read()) {
            shown = *items;
            if (isReached(shown)) {
                return shown;
            }
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    throw std::runtime_error(
        (u"waited in vain for "_s + what + u"; shown:\n"_s + listing(shown)).toStdString());
}

void Desktop::act(const Sought &sought, const QString &action)
{
    // The item may go between being found and being asked.
    awaitScreen(action + u' ' + sought.words, [&](const QList<ShownItem> &items) {
        const ShownItem *const item = find(items, sought);
        return item != nullptr && m_reader.act(*item, action);
    });
}

} // namespace vantrel::test
