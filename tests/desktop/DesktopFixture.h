#pragma once

#include "Desktop.h"

#include <gtest/gtest.h>

namespace vantrel::test {

/// A test that meets the application on a display. A wait in vain ends it.
class DesktopFixture : public testing::Test, protected Desktop
{
protected:
    /// Quits the application; it must end well, and without a word to standard error but those that
    /// were awaited.
    void TearDown() override;
};

/// The application on a sample repository, set up for the sample provider.
class ReviewFixture : public DesktopFixture
{
protected:
    void SetUp() override;

    [[nodiscard]] QString repositoryName() const { return QStringLiteral("ledger-api"); }

private:
    SampleProvider m_provider{};
};

} // namespace vantrel::test
