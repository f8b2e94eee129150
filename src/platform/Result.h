#pragma once

#include <tl/expected.hpp>

namespace vantrel {

/// A value or an expected failure. What may fail in ordinary use returns one; exceptions are left
/// to programmer errors.
template<typename Value, typename Error>
using Result = tl::expected<Value, Error>;

/// Makes the failed `Result`: `return failure(error);`.
template<typename Error>
[[nodiscard]] tl::unexpected<std::decay_t<Error>> failure(Error &&error)
{
    return tl::unexpected<std::decay_t<Error>>(std::forward<Error>(error));
}

} // namespace vantrel
