#include "platform/UserDefaults.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QTemporaryFile>
#include <QUrl>

#include <cerrno>
#include <cstdio>
#include <unistd.h>

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

Result<void, PlatformError> write(const QString &folder, const QString &key, QByteArrayView type,
                                  QByteArrayView value)
{
    if (const auto made = makeFolder(folder); !made) {
        return made;
    }
    const QByteArray content = type.toByteArray() + '\n' + value.toByteArray();
    QTemporaryFile file(folder + u'/' + temporaryPrefix() + u"XXXXXX"_s);
    if (!file.open() || !file.setPermissions(fileMode) || file.write(content) != content.size() ||
        !file.flush()) {
        return failure(errorOf(file));
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

/// The value under the key when it is of `type`.
std::optional<QByteArray> read(const QString &folder, const QString &key, QByteArrayView type)
{
    QFile file(filePath(folder, key));
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray content = file.readAll();
    const bool isOfType =
        content.startsWith(type) && content.size() > type.size() && content.at(type.size()) == '\n';
    return isOfType ? std::optional(content.sliced(type.size() + 1)) : std::nullopt;
}

} // namespace

UserDefaults::UserDefaults(QString folder)
    : m_folder(std::move(folder))
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
    const auto bytes = read(m_folder, key, textType);
    if (!bytes || !bytes->isValidUtf8()) {
        return std::nullopt;
    }
    // A plain conversion drops a byte order mark, and a text is to come back as it was set.
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return QString(decode(*bytes));
}

std::optional<bool> UserDefaults::boolean(const QString &key) const
{
    const auto bytes = read(m_folder, key, booleanType);
    if (bytes == "true") {
        return true;
    }
    return bytes == "false" ? std::optional(false) : std::nullopt;
}

std::optional<QByteArray> UserDefaults::bytes(const QString &key) const
{
    return read(m_folder, key, dataType);
}

Result<void, PlatformError> UserDefaults::setText(const QString &key, const QString &value)
{
    return write(m_folder, key, textType, value.toUtf8());
}

Result<void, PlatformError> UserDefaults::setBoolean(const QString &key, bool value)
{
    return write(m_folder, key, booleanType, value ? "true" : "false");
}

Result<void, PlatformError> UserDefaults::setBytes(const QString &key, const QByteArray &value)
{
    return write(m_folder, key, dataType, value);
}

Result<void, PlatformError> UserDefaults::remove(const QString &key)
{
    QFile file(filePath(m_folder, key));
    if (file.exists() && !file.remove()) {
        return failure(errorOf(file));
    }
    return {};
}

} // namespace vantrel
