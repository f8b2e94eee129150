#include "updates/IncompletePackage.h"

#include "platform/WholeWrite.h"
#include "updates/EdDSASignature.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;

auto refusal(const QFileDevice &file)
{
    return failure(PlatformError{file.errorString()});
}

} // namespace

IncompletePackage::IncompletePackage(const QString &folder)
    : m_folder(folder)
    , m_file(folder + u"/download-XXXXXX"_s)
{}

Result<std::shared_ptr<IncompletePackage>, PlatformError>
IncompletePackage::begin(const QString &folder)
{
    // A link in its place could lead to a folder whose files are somebody's work.
    if (!QDir().mkpath(folder) || QFileInfo(folder).isSymLink() ||
        !QFile::setPermissions(folder, ownerOnly)) {
        return failure(PlatformError{u"The folder for updates can't be made"_s});
    }
    QDir left(folder);
    for (const QString &name : left.entryList(QDir::Files | QDir::Hidden | QDir::System)) {
        left.remove(name);
    }
    auto package = std::make_shared<IncompletePackage>(folder);
    if (!package->m_file.open()) {
        return refusal(package->m_file);
    }
    return package;
}

Result<void, PlatformError> IncompletePackage::append(const QByteArray &bytes)
{
    return writeWholly(m_file.handle(), bytes);
}

Result<bool, PlatformError> IncompletePackage::isSigned(const QByteArray &publicKey,
                                                        const QByteArray &signature)
{
    const qint64 size = m_file.size();
    uchar *const bytes = m_file.map(0, size);
    if (bytes == nullptr) {
        return refusal(m_file);
    }
    const bool isSigned =
        isSignedWithEd25519(publicKey, signature, QByteArrayView(bytes, qsizetype(size)));
    m_file.unmap(bytes);
    return isSigned;
}

Result<QString, PlatformError> IncompletePackage::keepAs(const QString &name)
{
    QString path = m_folder + u'/' + name;
    if (!m_file.rename(path)) {
        return refusal(m_file);
    }
    m_file.setAutoRemove(false);
    m_file.close();
    return path;
}

} // namespace vantrel
