#pragma once

#include "platform/JsonDocument.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QList>

#include <utility>

namespace vantrel {

/// The JSON array of `records`, each in the form that `toJson` gives it.
template<typename Record>
[[nodiscard]] QByteArray storedForm(const QList<Record> &records)
{
    QJsonArray array;
    for (const Record &record : records) {
        array.append(toJson(record));
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

/// The records of a JSON array, each read by `read`. Nothing at all when one of them cannot be
/// read: what is there was not written by this application, or not wholly.
template<typename Read>
[[nodiscard]] auto recordsFromStoredForm(const QByteArray &json, Read read)
{
    using Record = typename decltype(read(QJsonValue()))::value_type;
    QList<Record> records;
    const QJsonArray array = documentFromJson(json).array();
    for (const QJsonValue item : array) {
        auto record = read(item);
        if (!record) {
            return QList<Record>();
        }
        records.append(*std::move(record));
    }
    return records;
}

} // namespace vantrel
