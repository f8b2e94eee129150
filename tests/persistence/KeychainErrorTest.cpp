#include "persistence/KeychainError.h"

#include <gtest/gtest.h>

#include <limits>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

KeychainError unhandled(std::int32_t status)
{
    KeychainError error;
    error.status = status;
    return error;
}

TEST(KeychainError, DescribesAStatusInDecimalWithItsMinusSign)
{
    EXPECT_EQ(unhandled(-25291).description(), u"Keychain error (status -25291)"_s);
    EXPECT_EQ(unhandled(100001).description(), u"Keychain error (status 100001)"_s);
    EXPECT_EQ(unhandled(std::numeric_limits<std::int32_t>::min()).description(),
              u"Keychain error (status -2147483648)"_s);
}

TEST(KeychainError, ComparesByStatus)
{
    EXPECT_EQ(unhandled(-25308), unhandled(-25308));
    EXPECT_NE(unhandled(-25308), unhandled(-25291));
}

} // namespace
} // namespace vantrel
