#pragma once

#include <QString>

namespace vantrel {

/// Why JSON is not the stored form of a record.
struct CodingError
{
    enum class Case { notAnObject, missingKey, wrongType, invalidValue, invalidKeyCount };

    Case kind = Case::notAnObject;
    QString key{}; ///< The key at fault; none when the whole value is.

    /// A sentence for the log and for tests; no screen shows it.
    [[nodiscard]] QString description() const;

    bool operator==(const CodingError &) const = default;
};

} // namespace vantrel
