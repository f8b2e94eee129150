#include "models/RecentRepoCoding.h"

#include "models/JsonFields.h"

#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto idKey = "id"_L1;
constexpr auto nameKey = "name"_L1;
constexpr auto pathKey = "path"_L1;
constexpr auto lastOpenedKey = "lastOpened"_L1;

} // namespace

QJsonObject toJson(const RecentRepo &repo)
{
    return {
        {idKey, encodedUuid(repo.id)},
        {nameKey, repo.name},
        {pathKey, repo.path},
        {lastOpenedKey, encodedDate(repo.lastOpened)},
    };
}

tl::expected<RecentRepo, CodingError> recentRepoFromJson(const QJsonValue &value)
{
    JsonFields fields(value);
    RecentRepo repo;
    repo.id = fields.uuid(idKey);
    repo.name = fields.text(nameKey);
    repo.path = fields.text(pathKey);
    repo.lastOpened = fields.date(lastOpenedKey);
    return fields.decoded(std::move(repo));
}

} // namespace vantrel
