#pragma once

#include "onboarding/LocalModelServerDetecting.h"
#include "platform/jobs/WaiterList.h"

#include <optional>

namespace vantrel::test {

/// A detection that ends when the test says so. Thread: interface.
class FakeLocalDetector final : public LocalModelServerDetecting
{
public:
    /// How many detections have begun.
    [[nodiscard]] int begunCount() const { return m_begunCount; }

    /// Ends the detection that is under way.
    void finish(const LocalModelServerStatuses &statuses);

    Task<LocalModelServerStatuses> detectAll() override;

private:
    int m_begunCount = 0;
    std::optional<LocalModelServerStatuses> m_statuses{};
    WaiterList m_waiters{};
};

} // namespace vantrel::test
