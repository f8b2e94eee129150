#pragma once

#include <QByteArray>
#include <QList>

#include <cstdint>

struct xcb_connection_t;

namespace vantrel::test {

/// What a window manager and a launcher hear of the ends of starts, on the display of the test.
class StartupMessages
{
public:
    /// Listens from now on.
    StartupMessages();
    StartupMessages(const StartupMessages &) = delete;
    StartupMessages &operator=(const StartupMessages &) = delete;
    ~StartupMessages();

    /// Takes what has come meanwhile.
    void read();

    /// The times as of which windows asked for the front.
    [[nodiscard]] const QList<std::uint32_t> &times() const { return m_times; }

    /// The texts to launchers that are whole.
    [[nodiscard]] const QList<QByteArray> &texts() const { return m_texts; }

private:
    [[nodiscard]] std::uint32_t atom(const QByteArray &name) const;

    xcb_connection_t *m_connection;
    std::uint32_t m_activeWindow;
    std::uint32_t m_begin;
    std::uint32_t m_next;
    QList<std::uint32_t> m_times{};
    QByteArray m_text{}; ///< What has come of the next text.
    QList<QByteArray> m_texts{};
};

} // namespace vantrel::test
