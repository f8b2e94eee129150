#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTemporaryDir>

#include <optional>

namespace vantrel::test {

/// The socket of a journal, at which nothing is read but by the test.
class JournalSocket
{
public:
    using Fields = QMap<QByteArray, QByteArray>;

    JournalSocket();
    JournalSocket(const JournalSocket &) = delete;
    JournalSocket &operator=(const JournalSocket &) = delete;
    ~JournalSocket();

    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("socket")); }

    /// The next entry that was sent; nothing when there is none.
    [[nodiscard]] std::optional<Fields> next() { return receive(0); }

    /// Waits for the next entry; nothing when none comes for a minute.
    [[nodiscard]] std::optional<Fields> awaitNext();

private:
    [[nodiscard]] std::optional<Fields> receive(int waitMs);

    QTemporaryDir m_folder{};
    int m_handle = -1;
};

} // namespace vantrel::test
