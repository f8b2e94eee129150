#pragma once

#include "platform/keychain/SecretItems.h"
#include "platform_keychain/Keyring.h"
#include "support/ProcessRun.h"

#include <gtest/gtest.h>

namespace vantrel::test {

/// A test that begins and ends with a keyring that runs, is unlocked and holds no item of ours.
class KeyringTest : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    /// What another program finds under our service: one sorted line for each value, without times.
    [[nodiscard]] static QStringList foundItems();

    /// Runs the probe in this session; see its source for the steps.
    [[nodiscard]] static ProcessRun probe(const QStringList &steps, const QByteArray &input = {});

    /// Runs the probe in a session of its own, made by with-keyring.sh with `options`.
    [[nodiscard]] static ProcessRun probeElsewhere(const QStringList &options,
                                                   const QStringList &steps,
                                                   const QByteArray &input = {});

    Keyring keyring{};
    std::unique_ptr<SecretItems> items = systemSecretItems();
};

/// The line that the probe prints for this key.
[[nodiscard]] QByteArray digestLine(const QByteArray &key);

} // namespace vantrel::test
