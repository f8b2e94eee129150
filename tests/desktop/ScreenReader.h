#pragma once

#include <QDBusConnection>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace vantrel::test {

/// One thing that the application shows, as assistive technologies meet it.
struct ShownItem
{
    QString role{}; ///< In the words of the bus, such as "push button".
    QString name{};
    QString description{};
    quint64 states = 0; ///< One bit for each number of the bus's list of states.
    QString path{};     ///< Where it is asked for more.
    int depth = 0;

    [[nodiscard]] bool isEnabled() const { return hasState(8) && hasState(24); }
    [[nodiscard]] bool isEditable() const { return hasState(7); }
    [[nodiscard]] bool isActive() const { return hasState(1); }
    [[nodiscard]] bool isFocused() const { return hasState(12); }
    [[nodiscard]] bool isSelected() const { return hasState(23); }
    [[nodiscard]] bool isShowing() const { return hasState(25); }

private:
    [[nodiscard]] bool hasState(int number) const { return ((states >> number) & 1) != 0; }
};

/// All of them as lines, for the message of a failure.
[[nodiscard]] QString listing(const QList<ShownItem> &items);

/// Meets the running application as a screen reader does: through the accessibility bus of the
/// session and in no other way. Nothing is remembered but where the application is.
class ScreenReader final
{
public:
    /// Connects to the accessibility bus, which the session starts at the first question.
    ScreenReader();

    /// What is shown now, in reading order. Nothing while the application is not there, or when it
    /// changed so much during the reading that an item went away.
    [[nodiscard]] std::optional<QList<ShownItem>> read();

    /// The names of what the item can be asked to do; none when it has gone.
    [[nodiscard]] QStringList actions(const ShownItem &item) const;

    /// Does what the item offers under this name; whether it could.
    [[nodiscard]] bool act(const ShownItem &item, const QString &action) const;

    /// The text in a field.
    [[nodiscard]] QString textIn(const ShownItem &field) const;

private:
    [[nodiscard]] QString findApplication() const;
    [[nodiscard]] bool readBelow(const QString &path, int depth, QList<ShownItem> &items) const;

    QDBusConnection m_bus;
    QString m_application{}; ///< Its name on the bus.
};

} // namespace vantrel::test
