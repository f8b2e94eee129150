#pragma once

#include "platform/Failure.h"

#include <QString>

#include <cstdint>

namespace vantrel {

/// A child process that ran and failed.
struct ProcessRunnerError
{
    enum class Case { nonZeroExit };

    Case kind = Case::nonZeroExit;
    std::int32_t status = 0; ///< The exit status; the number of the signal that ended it.
    QString message{};       ///< The child's standard error, untrimmed.

    [[nodiscard]] QString description() const;

    bool operator==(const ProcessRunnerError &) const = default;
};

/// What running a child process can end in: its own failure, or a launch that the platform refused.
using ProcessFailure = Failure<ProcessRunnerError>;

} // namespace vantrel
