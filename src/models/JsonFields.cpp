#include "models/JsonFields.h"

#include <cmath>
#include <cstdint>

namespace vantrel {

namespace {

/// 2001-01-01 00:00:00 UTC, in milliseconds since 1970.
constexpr std::int64_t referenceDate = 978'307'200'000;

/// Dates beyond this many seconds (some 30,000 years) are no dates of ours, and would not fit.
constexpr double maxSeconds = 1e12;

} // namespace

JsonFields::JsonFields(const QJsonValue &value)
    : m_object(value.toObject())
{
    if (!value.isObject()) {
        fail(CodingError::Case::notAnObject, QLatin1StringView());
    }
}

QString JsonFields::text(QLatin1StringView key)
{
    return field(key, QJsonValue::String).toString();
}

QStringList JsonFields::texts(QLatin1StringView key)
{
    QStringList texts;
    const QJsonArray items = array(key);
    for (const QJsonValue item : items) {
        if (!item.isString()) {
            fail(CodingError::Case::wrongType, key);
            return {};
        }
        texts.append(item.toString());
    }
    return texts;
}

bool JsonFields::boolean(QLatin1StringView key)
{
    return field(key, QJsonValue::Bool).toBool();
}

QJsonObject JsonFields::object(QLatin1StringView key)
{
    return field(key, QJsonValue::Object).toObject();
}

QJsonArray JsonFields::array(QLatin1StringView key)
{
    return field(key, QJsonValue::Array).toArray();
}

bool JsonFields::contains(QLatin1StringView key) const
{
    const QJsonValue value = m_object.value(key);
    return !value.isUndefined() && !value.isNull();
}

QUuid JsonFields::uuid(QLatin1StringView key)
{
    const QString canonical = text(key);
    const QUuid uuid = QUuid::fromString(canonical);
    // Qt also reads forms with braces, and a null UUID from anything else.
    if (uuid.toString(QUuid::WithoutBraces).compare(canonical, Qt::CaseInsensitive) != 0) {
        fail(CodingError::Case::invalidValue, key);
    }
    return uuid;
}

QDateTime JsonFields::date(QLatin1StringView key)
{
    const double seconds = field(key, QJsonValue::Double).toDouble();
    if (!(std::abs(seconds) <= maxSeconds)) {
        fail(CodingError::Case::invalidValue, key);
        return {};
    }
    return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000) + referenceDate, Qt::UTC);
}

void JsonFields::fail(CodingError::Case kind, QLatin1StringView key)
{
    if (!m_error) {
        m_error = CodingError{kind, key};
    }
}

QJsonValue JsonFields::field(QLatin1StringView key, QJsonValue::Type type)
{
    const QJsonValue value = m_object.value(key);
    if (value.isUndefined()) {
        fail(CodingError::Case::missingKey, key);
    } else if (value.type() != type) {
        fail(CodingError::Case::wrongType, key);
    }
    return value;
}

QJsonValue encodedUuid(const QUuid &uuid)
{
    return uuid.toString(QUuid::WithoutBraces).toUpper();
}

QJsonValue encodedDate(const QDateTime &date)
{
    return double(date.toMSecsSinceEpoch() - referenceDate) / 1000;
}

} // namespace vantrel
