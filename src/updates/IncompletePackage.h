#pragma once

#include "platform/PlatformError.h"
#include "platform/Result.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryFile>

#include <memory>

namespace vantrel {

/// A download on its way into a folder. It has no name, or is removed, until it is kept: what is
/// dropped before leaves nothing behind. Only the person can read it. Thread: any, one at a time;
/// the calls block.
class IncompletePackage final
{
public:
    /// Makes `folder` if need be, for the person alone, and empties it of what earlier downloads
    /// have left there.
    [[nodiscard]] static Result<std::shared_ptr<IncompletePackage>, PlatformError>
    begin(const QString &folder);

    Result<void, PlatformError> append(const QByteArray &bytes);

    /// Whether the bytes on the disk are signed with this key.
    [[nodiscard]] Result<bool, PlatformError> isSigned(const QByteArray &publicKey,
                                                       const QByteArray &signature);

    /// Gives the package its name in the folder, and the path that it has from now on.
    Result<QString, PlatformError> keepAs(const QString &name);

    explicit IncompletePackage(const QString &folder);

private:
    QString m_folder;
    QTemporaryFile m_file;
};

} // namespace vantrel
