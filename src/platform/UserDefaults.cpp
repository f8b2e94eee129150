#include "platform/UserDefaults.h"

#include "platform/WholeWrite.h"

#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QTemporaryFile>
#include <QUrl>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <sys/file.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

// A file is the type's name on a line of its own, and then the value as it is.
constexpr QByteArrayView textType = "text";
constexpr QByteArrayView booleanType = "boolean";
constexpr QByteArrayView dataType = "data";

constexpr auto folderMode =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
constexpr auto fileMode = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

QString filePath(const QString &folder, const QString &key)
{
    return folder + u'/' + QString::fromLatin1(QUrl::toPercentEncoding(key));
}

PlatformError errorOf(const QFileDevice &file)
{
    return PlatformError{file.errorString()};
}

Result<void, PlatformError> makeFolder(const QString &folder)
{
    if (QFileInfo(folder).isDir()) {
        return {};
    }
    if (!QDir().mkpath(folder)) {
        return failure(PlatformError{u"The folder "_s + folder + u" could not be made."_s});
    }
    QFile::setPermissions(folder, folderMode);
    return {};
}

QString temporaryPrefix()
{
    return u".saving-"_s;
}

/// A temporary file that nobody has written to for this long belongs to a process that was killed.
constexpr qint64 staleAfterSeconds = 60;

/// What the file of a key with this value holds.
QByteArray fileContent(QByteArrayView type, QByteArrayView value)
{
    return type.toByteArray() + '\n' + value.toByteArray();
}

Result<void, PlatformError> write(const QString &folder, const QString &key,
                                  const QByteArray &content)
{
    if (const auto made = makeFolder(folder); !made) {
        return made;
    }
    QTemporaryFile file(folder + u'/' + temporaryPrefix() + u"XXXXXX"_s);
    if (!file.open() || !file.setPermissions(fileMode)) {
        return failure(errorOf(file));
    }
    if (const auto written = writeWholly(file.handle(), content); !written) {
        return written;
    }
    // The content must be on the disk before the name points to it.
    const QByteArray target = QFile::encodeName(filePath(folder, key));
    if (::fsync(file.handle()) != 0 ||
        std::rename(QFile::encodeName(file.fileName()).constData(), target.constData()) != 0) {
        return failure(PlatformError{qt_error_string(errno)});
    }
    file.setAutoRemove(false);
    return {};
}

/// What the file of the key holds; nothing when there is none, or none that this person may read.
/// Fails when it cannot be read for now.
Result<std::optional<QByteArray>, PlatformError> read(const QString &folder, const QString &key)
{
    QFile file(filePath(folder, key));
    if (!QFileInfo(file).isFile()) {
        return std::optional<QByteArray>();
    }
    if (!file.open(QIODevice::ReadOnly)) {
        // The files that this process may have open at once are used up.
        if (file.error() == QFileDevice::ResourceError) {
            return failure(errorOf(file));
        }
        return std::optional<QByteArray>();
    }
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return failure(errorOf(file));
    }
    return std::optional(std::move(content));
}

/// The value in a file's content when it is of `type`.
std::optional<QByteArray> valueIn(const QByteArray &content, QByteArrayView type)
{
    const bool isOfType =
        content.startsWith(type) && content.size() > type.size() && content.at(type.size()) == '\n';
    return isOfType ? std::optional(content.sliced(type.size() + 1)) : std::nullopt;
}

/// Held while a value is read, changed and written, so that no other instance does so meanwhile.
/// The system lets go of it when its process dies. Whoever holds it for longer than any disk takes
/// hangs, and is waited for no longer.
class ChangingLock
{
public:
    explicit ChangingLock(const QString &folder)
        : m_folder(
              ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        using namespace std::chrono_literals;
        const auto end = std::chrono::steady_clock::now() + 2s;
        while (::flock(m_folder, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK &&
               std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(1ms);
        }
    }
    ChangingLock(const ChangingLock &) = delete;
    ChangingLock &operator=(const ChangingLock &) = delete;
    ~ChangingLock()
    {
        if (m_folder >= 0) {
            ::close(m_folder);
        }
    }

private:
    int m_folder;
};

} // namespace

/// What could not be written yet. The files' contents by key.
struct UserDefaults::Unsaved
{
    explicit Unsaved(QString inFolder)
        : folder(std::move(inFolder))
    {}
    Unsaved(const Unsaved &) = delete;
    Unsaved &operator=(const Unsaved &) = delete;
    ~Unsaved()
    {
        // What fails again is lost, which the log has told of.
        writeWhatWaits();
    }

    [[nodiscard]] std::optional<QByteArray> content(const QString &key)
    {
        const std::lock_guard lock(mutex);
        const auto found = contents.constFind(key);
        return found == contents.cend() ? std::nullopt : std::optional(*found);
    }

    /// Writes the content, and once that succeeds what waits.
    Result<void, PlatformError> save(const QString &key, const QByteArray &content)
    {
        const std::lock_guard inTurn(turnOf(key));
        if (const auto written = write(folder, key, content); !written) {
            keep(key, content, written.error());
            return written;
        }
        forget(key);
        writeWhatWaits();
        return {};
    }

    /// Held through a write, so that no older value follows a newer one. Each key has its own, lest
    /// a setting waits for the whole history to be written.
    [[nodiscard]] std::mutex &turnOf(const QString &key)
    {
        const std::lock_guard lock(mutex);
        return turns[key]; // Which stays where it is.
    }

    void forget(const QString &key)
    {
        const std::lock_guard lock(mutex);
        contents.remove(key);
    }

    const QString folder;

private:
    void keep(const QString &key, const QByteArray &content, const PlatformError &error)
    {
        const std::lock_guard lock(mutex);
        if (contents.isEmpty()) {
            qWarning("the preferences could not be saved, and are kept until they can be: %s",
                     qPrintable(error.description()));
        }
        contents.insert(key, content);
    }

    void writeWhatWaits()
    {
        const QStringList waiting = waitingKeys();
        for (const QString &key : waiting) {
            // Whoever has it writes a newer value.
            const std::unique_lock inTurn(turnOf(key), std::try_to_lock);
            const auto kept = inTurn ? content(key) : std::nullopt;
            if (kept && write(folder, key, *kept)) {
                forget(key);
            }
        }
    }

    [[nodiscard]] QStringList waitingKeys()
    {
        const std::lock_guard lock(mutex);
        return contents.keys();
    }

    std::mutex mutex{}; ///< Guards both maps.
    QMap<QString, QByteArray> contents{};
    std::map<QString, std::mutex> turns{};
};

UserDefaults::UserDefaults(QString folder)
    : m_folder(std::move(folder))
    , m_unsaved(std::make_shared<Unsaved>(m_folder))
{
    const QDir preferences(m_folder);
    const QFileInfoList leftovers =
        preferences.entryInfoList({temporaryPrefix() + u'*'}, QDir::Files | QDir::Hidden);
    for (const QFileInfo &leftover : leftovers) {
        if (leftover.lastModified().secsTo(QDateTime::currentDateTime()) > staleAfterSeconds) {
            QFile::remove(leftover.filePath());
        }
    }
}

QString UserDefaults::standardFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/com.orbisk.app"_s;
}

std::optional<QString> UserDefaults::text(const QString &key) const
{
    const auto bytes = value(key, textType);
    if (!bytes || !bytes->isValidUtf8()) {
        return std::nullopt;
    }
    // A plain conversion drops a byte order mark, and a text is to come back as it was set.
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return QString(decode(*bytes));
}

std::optional<bool> UserDefaults::boolean(const QString &key) const
{
    const auto bytes = value(key, booleanType);
    if (bytes == "true") {
        return true;
    }
    return bytes == "false" ? std::optional(false) : std::nullopt;
}

std::optional<QByteArray> UserDefaults::bytes(const QString &key) const
{
    return value(key, dataType);
}

Result<void, PlatformError> UserDefaults::setText(const QString &key, const QString &value)
{
    return set(key, textType, value.toUtf8());
}

Result<void, PlatformError> UserDefaults::setBoolean(const QString &key, bool value)
{
    return set(key, booleanType, value ? "true" : "false");
}

Result<void, PlatformError> UserDefaults::setBytes(const QString &key, const QByteArray &value)
{
    return set(key, dataType, value);
}

Result<void, PlatformError> UserDefaults::remove(const QString &key)
{
    const std::lock_guard inTurn(m_unsaved->turnOf(key));
    QFile file(filePath(m_folder, key));
    if (file.exists() && !file.remove()) {
        return failure(errorOf(file));
    }
    m_unsaved->forget(key);
    return {};
}

Result<void, PlatformError>
UserDefaults::changeBytes(const QString &key,
                          const std::function<QByteArray(const QByteArray &)> &changed)
{
    makeFolder(m_folder); // Where that fails, so does the write.
    const ChangingLock lock(m_folder);
    auto content = m_unsaved->content(key);
    if (!content) {
        auto stored = read(m_folder, key);
        if (!stored) {
            // To go on from nothing would replace all that is there.
            qWarning("a preference could not be read, and stays as it is: %s",
                     qPrintable(stored.error().description()));
            return failure(stored.error());
        }
        content = std::move(*stored);
    }
    const auto bytes = content ? valueIn(*content, dataType) : std::nullopt;
    return setBytes(key, changed(bytes.value_or(QByteArray())));
}

std::optional<QByteArray> UserDefaults::value(const QString &key, QByteArrayView type) const
{
    auto content = m_unsaved->content(key);
    if (!content) {
        content = read(m_folder, key).value_or(std::nullopt);
    }
    return content ? valueIn(*content, type) : std::nullopt;
}

Result<void, PlatformError> UserDefaults::set(const QString &key, QByteArrayView type,
                                              QByteArrayView value)
{
    return m_unsaved->save(key, fileContent(type, value));
}

} // namespace vantrel
