#pragma once

#include "platform/keychain/SecretItems.h"

#include <QStringList>

#include <deque>

namespace vantrel::test {

/// What `FakeSecretItems` answers and was asked, which outlives the store that owns the fake.
struct SecretItemsScript
{
    std::deque<SecretItems::Match> matches{};  ///< One for each `copyMatching`.
    std::deque<std::int32_t> addStatuses{};    ///< One for each `add`.
    std::deque<std::int32_t> removeStatuses{}; ///< One for each `remove`.
    QStringList calls{};                       ///< As "add service account".
    QList<QByteArray> secrets{};               ///< What was added.
};

/// A keychain that answers as scripted; a question without an answer fails the test.
class FakeSecretItems final : public SecretItems
{
public:
    /// `script` must outlive the fake.
    explicit FakeSecretItems(SecretItemsScript &script);

    [[nodiscard]] Match copyMatching(const QString &service, const QString &account) override;
    [[nodiscard]] std::int32_t add(const QString &service, const QString &account,
                                   const QByteArray &secret) override;
    [[nodiscard]] std::int32_t remove(const QString &service, const QString &account) override;

private:
    SecretItemsScript &m_script;
};

} // namespace vantrel::test
