#pragma once

#include "platform/PlatformError.h"
#include "platform/Result.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace vantrel {

/// The preferences store: a text, a boolean or bytes under a key, or nothing.
///
/// One file per key in one folder, replaced atomically and readable by its owner alone, so that
/// damage stays within one key and two running instances lose nothing on different keys. What is
/// missing, damaged or of another type reads as nothing. Thread: any.
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

    /// Each replaces whatever the key held. On failure the old value stays.
    Result<void, PlatformError> setText(const QString &key, const QString &value);
    Result<void, PlatformError> setBoolean(const QString &key, bool value);
    Result<void, PlatformError> setBytes(const QString &key, const QByteArray &value);
    Result<void, PlatformError> remove(const QString &key);

private:
    QString m_folder;
};

} // namespace vantrel
