// Whatever a model server lists, its chat models are trimmed, each is there once, none embeds, and
// together they are no longer than the list. Listed again, in whatever doubling, they are the same.

#include "FuzzCheck.h"

#include "onboarding/LocalModelListParser.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <algorithm>

namespace {

using namespace Qt::Literals::StringLiterals;
using vantrel::fuzz::check;

bool isChatModel(const QString &model)
{
    return !model.isEmpty() && model == model.trimmed() &&
           !model.contains("embed"_L1, Qt::CaseInsensitive);
}

QByteArray listing(const QStringList &models)
{
    QJsonArray entries;
    for (const QString &model : models) {
        entries.append(QJsonObject{{"id"_L1, model}});
    }
    return QJsonDocument(QJsonObject{{"data"_L1, entries}}).toJson();
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const auto models = LocalModelListParser::parse(input.toByteArray());
    if (!models) {
        return;
    }
    check(std::all_of(models->cbegin(), models->cend(), isChatModel),
          "a model is trimmed, has a name and can chat");
    check(QSet<QString>(models->cbegin(), models->cend()).size() == models->size(),
          "each model is there once");
    check(models->join(QString()).size() <= input.size(), "models are no longer than their list");
    check(LocalModelListParser::parse(listing(*models + *models)) == models,
          "models listed twice are the same");
}
