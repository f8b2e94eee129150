#include "support/FewDescriptors.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <vector>

namespace vantrel::test {

FewDescriptors::FewDescriptors(int left)
{
    EXPECT_EQ(::getrlimit(RLIMIT_NOFILE, &m_usual), 0);
    // The system hands out the lowest number that is free, so the last of these has `left` below
    // it.
    std::vector<int> taken;
    for (int i = 0; i <= left; ++i) {
        taken.push_back(::dup(STDERR_FILENO));
    }
    const rlimit narrow{rlim_t(taken.back()), m_usual.rlim_max};
    for (const int descriptor : taken) {
        ::close(descriptor);
    }
    EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &narrow), 0);
}

void FewDescriptors::end()
{
    EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &m_usual), 0);
}

} // namespace vantrel::test
