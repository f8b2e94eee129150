#pragma once

#include "platform/PlatformError.h"

#include <QString>

#include <utility>
#include <variant>

namespace vantrel {

/// The failure of an operation that can end in a service's own error or in the platform's.
/// `description()` is the user-facing sentence of whichever it is.
template<typename ServiceError>
class Failure
{
public:
    Failure(ServiceError error) // NOLINT(google-explicit-constructor): an error is a failure
        : m_error(std::move(error))
    {}
    Failure(PlatformError error) // NOLINT(google-explicit-constructor): an error is a failure
        : m_error(std::move(error))
    {}

    /// The service's error, or null when the platform failed.
    [[nodiscard]] const ServiceError *serviceError() const
    {
        return std::get_if<ServiceError>(&m_error);
    }

    [[nodiscard]] QString description() const
    {
        return std::visit([](const auto &error) { return error.description(); }, m_error);
    }

    bool operator==(const Failure &) const = default;

private:
    std::variant<ServiceError, PlatformError> m_error;
};

} // namespace vantrel
