#include "git/ProcessRunnerError.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(ProcessRunnerError, DescribesTheStatusAndTheUntrimmedMessage)
{
    ProcessRunnerError error;
    error.status = 128;
    error.message = u" fatal: no\n"_s;

    EXPECT_EQ(error.description(), u"Command exited with status 128:  fatal: no\n"_s);
}

TEST(ProcessRunnerError, AnEmptyMessageLeavesTheColonAndTheSpace)
{
    ProcessRunnerError error;
    error.status = 1;

    EXPECT_EQ(error.description(), u"Command exited with status 1: "_s);
}

TEST(ProcessRunnerError, ANegativeStatusKeepsItsSign)
{
    ProcessRunnerError error;
    error.status = -2;
    error.message = u"m"_s;

    EXPECT_EQ(error.description(), u"Command exited with status -2: m"_s);
}

TEST(ProcessRunnerError, AFailureDescribesItself)
{
    ProcessRunnerError error;
    error.status = 2;
    error.message = u"m"_s;

    EXPECT_EQ(ProcessFailure(error).description(), u"Command exited with status 2: m"_s);
    EXPECT_EQ(ProcessFailure(PlatformError{u"No such file or directory"_s}).description(),
              u"No such file or directory"_s);
}

} // namespace
} // namespace vantrel
