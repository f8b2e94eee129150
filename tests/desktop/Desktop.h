#pragma once

#include "ScreenReader.h"
#include "integration/SampleProcesses.h"

#include <QTemporaryDir>

#include <functional>
#include <optional>

namespace vantrel::test {

/// What a step looks for on the screen.
struct Sought
{
    QString words{}; ///< For the message of a failure.
    std::function<bool(const ShownItem &)> isIt{};
};

/// The item of this role and name.
[[nodiscard]] Sought named(const QString &role, const QString &name);

/// The item of this role whose name begins, or ends, like this.
[[nodiscard]] Sought beginning(const QString &role, const QString &beginning);
[[nodiscard]] Sought ending(const QString &role, const QString &ending);

/// The same when it has the keyboard, or is selected.
[[nodiscard]] Sought focused(const Sought &sought);
[[nodiscard]] Sought selected(const Sought &sought);

/// The built application on a display, met only through the accessibility bus and the keyboard. A
/// wait ends with what it waited for, or throws with the list of what is shown instead.
class Desktop
{
public:
    /// Sees to an unlocked keyring on the session bus. Before the application is started.
    static void startKeyring();

    /// Makes the provider at this address the one that the application is set up for.
    void writePreferences(const QString &baseURL) const;

    /// Starts the application with preferences in `folder()`, and waits for its window.
    void start(const QStringList &arguments, const QProcessEnvironment &environment);

    /// The environment of an application with preferences in `folder()`. Unless it names another
    /// keychain service, that is a trial's.
    [[nodiscard]] QProcessEnvironment onDisplay(QProcessEnvironment environment) const;

    /// Waits until all of these are shown. Gives everything that then is, in reading order.
    QList<ShownItem> await(const QList<Sought> &sought);

    /// Waits for the item, then does what a screen reader's "press" does, or gives it the keyboard.
    void press(const Sought &sought) { act(sought, QStringLiteral("Press")); }
    void focus(const Sought &sought) { act(sought, QStringLiteral("SetFocus")); }

    /// Waits until the field of this name holds this text.
    void awaitText(const QString &fieldName, const QString &text);

    /// Waits until the application has written this, and nothing else since its start, to standard
    /// error.
    void awaitErrors(const QByteArray &errors);

    /// Waits until this is so; `what` is for the message of a failure.
    void awaitThat(const QString &what, const std::function<bool()> &isSo);

    /// Quits the application by the keyboard and waits for its end.
    [[nodiscard]] ProcessRun quit();

    /// The words to standard error that were awaited so far.
    [[nodiscard]] const QByteArray &awaitedErrors() const { return m_awaitedErrors; }

    [[nodiscard]] bool isStarted() const { return m_application.has_value(); }
    [[nodiscard]] ChildProcess &application() { return *m_application; }
    [[nodiscard]] ScreenReader &reader() { return m_reader; }
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    [[nodiscard]] static QString keychainService()
    {
        return QStringLiteral("com.orbisk.apikeys.tests");
    }

private:
    using Reached = std::function<bool(const QList<ShownItem> &)>;

    QList<ShownItem> awaitScreen(const QString &what, const Reached &isReached);
    void act(const Sought &sought, const QString &action);

    /// Keeps a picture of the display, when the person who runs the test asked for a recording.
    void record();

    QTemporaryDir m_folder{};
    int m_recorded = 0;
    /// What a build without an address for updates says at its start, as that of the tests is.
    QByteArray m_awaitedErrors{
        "vantrel: SoftwareUpdate: In-app updates disabled: SUFeedURL is missing from Info.plist\n"};
    std::optional<ChildProcess> m_application{};
    ScreenReader m_reader{};
};

} // namespace vantrel::test
