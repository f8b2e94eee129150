#pragma once

#include "updates/UpdaterConfiguration.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

#include <memory>

namespace vantrel::test {

/// An item of a feed as it is written. What is empty is left out.
struct SampleItem
{
    QString version = QStringLiteral("0.2.0");
    QString versionName{};
    QString notes{};
    QString notesFormat = QStringLiteral("markdown");
    QString channel{};
    QString system = QStringLiteral("linux");
    QUrl packageURL{};
    QByteArray package{};   ///< Gives the length and the signature.
    QString length{};       ///< Instead of the package's.
    QByteArray signature{}; ///< Instead of the package's; base64.
};

/// Makes feeds and signs as the makers of an application do, with a key that is new each time.
class UpdateMaker final
{
public:
    UpdateMaker();
    UpdateMaker(const UpdateMaker &) = delete;
    UpdateMaker &operator=(const UpdateMaker &) = delete;
    ~UpdateMaker();

    [[nodiscard]] QByteArray publicKey() const;
    [[nodiscard]] QByteArray signature(const QByteArray &bytes) const;

    /// A feed of these items without a signature.
    [[nodiscard]] QByteArray feed(const QList<SampleItem> &items) const;

    /// `content` with its signature at the end.
    [[nodiscard]] QByteArray signedFeed(const QByteArray &content) const;

    [[nodiscard]] UpdaterConfiguration configuration(const QUrl &feedURL) const;

private:
    struct Key;

    std::unique_ptr<Key> m_key;
};

} // namespace vantrel::test
