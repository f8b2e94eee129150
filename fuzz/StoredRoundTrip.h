#pragma once

#include "FuzzCheck.h"

#include "persistence/StoredRecords.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace vantrel::fuzz {

/// Records are the same after they have been written and read.
template<typename Record, typename Read>
void checkWritten(const QList<Record> &records, Read read)
{
    check(recordsFromStoredForm(storedForm(records), read) == records,
          "records are the same after they have been written and read");
}

/// What can be read from any bytes can be written, and there are fewer records than bytes.
template<typename Read>
void checkRead(QByteArrayView json, Read read)
{
    const auto records = recordsFromStoredForm(json.toByteArray(), read);
    check(records.size() <= json.size(), "there are no more records than bytes");
    checkWritten(records, read);
}

/// The texts between the null characters of the input, at least `fewest`. Only so many, since each
/// becomes several JSON values of a hundred bytes.
[[nodiscard]] inline QStringList textsOf(QByteArrayView input, qsizetype fewest)
{
    constexpr qsizetype most = 8;
    QStringList texts = QString::fromUtf8(input).split(QChar(u'\0'));
    texts.resize(std::clamp(texts.size(), fewest, most));
    return texts;
}

/// A moment, some 30,000 years around now, out of the first bytes of the input.
[[nodiscard]] inline QDateTime momentOf(QByteArrayView input)
{
    constexpr std::int64_t maxMilliseconds = 900'000'000'000'000;
    std::int64_t number = 0;
    std::memcpy(&number, input.data(), std::min(sizeof number, std::size_t(input.size())));
    return QDateTime::fromMSecsSinceEpoch(number % maxMilliseconds, Qt::UTC);
}

} // namespace vantrel::fuzz
