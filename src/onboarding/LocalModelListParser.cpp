#include "onboarding/LocalModelListParser.h"

#include "platform/JsonDocument.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

namespace vantrel::LocalModelListParser {

using namespace Qt::Literals::StringLiterals;

std::optional<QStringList> parse(const QByteArray &body)
{
    const QJsonValue data = documentFromJson(body).object().value("data"_L1);
    if (!data.isArray()) {
        return std::nullopt;
    }
    QStringList models;
    QSet<QString> taken;
    const QJsonArray entries = data.toArray();
    for (const auto &entry : entries) {
        const QJsonValue id = entry["id"_L1];
        if (!id.isString()) {
            return std::nullopt;
        }
        const QString model = id.toString().trimmed();
        const bool isChatModel =
            !model.isEmpty() && !model.toLower().contains(u"embed"_s) && !taken.contains(model);
        if (isChatModel) {
            taken.insert(model);
            models.append(model);
        }
    }
    return models;
}

} // namespace vantrel::LocalModelListParser
