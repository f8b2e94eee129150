#pragma once

#include <sys/resource.h>

namespace vantrel::test {

/// Leaves this process no more than so many files that it may still open.
class FewDescriptors
{
public:
    explicit FewDescriptors(int left);
    FewDescriptors(const FewDescriptors &) = delete;
    FewDescriptors &operator=(const FewDescriptors &) = delete;
    ~FewDescriptors() { end(); }

    /// Gives back what was there before.
    void end();

private:
    rlimit m_usual{};
};

} // namespace vantrel::test
