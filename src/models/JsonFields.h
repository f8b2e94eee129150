#pragma once

#include "models/CodingError.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QStringList>
#include <QUuid>

#include <tl/expected.hpp>

#include <optional>

namespace vantrel {

/// Reads the required fields of a record's JSON object. The first failure stays: what is read after
/// it is empty, and `decoded` answers it. So a decoder reads field after field and asks once.
class JsonFields
{
public:
    /// Fails at once when `value` is no object.
    explicit JsonFields(const QJsonValue &value);

    [[nodiscard]] QString text(QLatin1StringView key);
    [[nodiscard]] QStringList texts(QLatin1StringView key);
    [[nodiscard]] bool boolean(QLatin1StringView key);
    [[nodiscard]] QJsonObject object(QLatin1StringView key);
    [[nodiscard]] QJsonArray array(QLatin1StringView key);
    /// From the canonical form of 36 characters, in either case.
    [[nodiscard]] QUuid uuid(QLatin1StringView key);
    /// From seconds since 2001-01-01 00:00:00 UTC, to the nearest millisecond, in UTC.
    [[nodiscard]] QDateTime date(QLatin1StringView key);

    /// Whether there is a value, of whatever type, for a field that is not required. A null counts
    /// as none.
    [[nodiscard]] bool contains(QLatin1StringView key) const;

    /// Records a failure that the decoder found itself.
    void fail(CodingError::Case kind, QLatin1StringView key);

    /// `record`, if every field of it was read.
    template<typename Record>
    [[nodiscard]] tl::expected<Record, CodingError> decoded(Record record) const
    {
        if (m_error) {
            return tl::unexpected<CodingError>(*m_error);
        }
        return record;
    }

private:
    QJsonValue field(QLatin1StringView key, QJsonValue::Type type);

    QJsonObject m_object{};
    std::optional<CodingError> m_error{};
};

/// The canonical form of a UUID, in capitals.
[[nodiscard]] QJsonValue encodedUuid(const QUuid &uuid);

/// Seconds since 2001-01-01 00:00:00 UTC, with milliseconds as a fraction. The date is valid.
[[nodiscard]] QJsonValue encodedDate(const QDateTime &date);

} // namespace vantrel
