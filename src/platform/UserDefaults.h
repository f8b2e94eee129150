#pragma once

#include "platform/PlatformError.h"
#include "platform/Result.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace vantrel {

/// The preferences store: a text, a boolean or bytes under a key, or nothing.
///
/// One file per key in one folder, replaced atomically and readable by its owner alone, so that
/// damage stays within one key and two running instances lose nothing on different keys. What is
/// missing, damaged or of another type reads as nothing.
///
/// A value that cannot be written, as on a full disk, counts nevertheless: it is kept in memory,
/// and written with the next value that can be, or at the end. The log tells of the first one only.
/// Copies share what they keep. Thread: any.
class UserDefaults final
{
public:
    /// Keeps the preferences in `folder`, which is made with mode 0700 at the first write. Removes
    /// the temporary files that a killed process may have left there.
    explicit UserDefaults(QString folder);

    /// `$XDG_CONFIG_HOME/com.orbisk.app`, or the platform's equivalent.
    [[nodiscard]] static QString standardFolder();

    [[nodiscard]] std::optional<QString> text(const QString &key) const;
    [[nodiscard]] std::optional<bool> boolean(const QString &key) const;
    [[nodiscard]] std::optional<QByteArray> bytes(const QString &key) const;

    /// Each replaces whatever the key held. On failure the file keeps the old value.
    Result<void, PlatformError> setText(const QString &key, const QString &value);
    Result<void, PlatformError> setBoolean(const QString &key, bool value);
    Result<void, PlatformError> setBytes(const QString &key, const QByteArray &value);
    Result<void, PlatformError> remove(const QString &key);

    /// Sets the bytes that `changed` makes of those that the key holds, which are empty for
    /// nothing. Of two instances that change a key at once, the second waits for the first and goes
    /// on from its value. Fails, and changes nothing, when what is there cannot be read for now.
    Result<void, PlatformError>
    changeBytes(const QString &key, const std::function<QByteArray(const QByteArray &)> &changed);

private:
    struct Unsaved;

    [[nodiscard]] std::optional<QByteArray> value(const QString &key, QByteArrayView type) const;
    Result<void, PlatformError> set(const QString &key, QByteArrayView type, QByteArrayView value);

    QString m_folder;
    std::shared_ptr<Unsaved> m_unsaved;
};

} // namespace vantrel
