#include "app/AppCoordinator.h"

#include "ai/AIResultCache.h"
#include "platform/StateStep.h"
#include "platform/jobs/RunQueue.h"

#include <utility>

namespace vantrel {

namespace {

const Repo *repository(const AppCoordinator::Route &route)
{
    if (const auto *const files = std::get_if<AppCoordinator::FilesRoute>(&route)) {
        return &files->repo;
    }
    if (const auto *const diff = std::get_if<AppCoordinator::DiffRoute>(&route)) {
        return &diff->repo;
    }
    return nullptr;
}

} // namespace

AppCoordinator::AppCoordinator(QObject *parent)
    : QObject(parent)
    , m_aiResultCache(std::make_shared<AIResultCache>())
{}

AppCoordinator::~AppCoordinator() = default;

void AppCoordinator::setRoute(Route route)
{
    VANTREL_ASSERT_UI_THREAD();
    StateStep step(*this);
    step.set(m_route, std::move(route), &AppCoordinator::routeChanged);
    step.publish();
}

void AppCoordinator::setCurrentBranch(std::optional<QString> branch)
{
    VANTREL_ASSERT_UI_THREAD();
    StateStep step(*this);
    step.set(m_currentBranch, std::move(branch), &AppCoordinator::currentBranchChanged);
    step.publish();
}

void AppCoordinator::setAiResultCache(std::shared_ptr<AIResultCache> cache)
{
    VANTREL_ASSERT_UI_THREAD();
    StateStep step(*this);
    step.set(m_aiResultCache, std::move(cache), &AppCoordinator::aiResultCacheChanged);
    step.publish();
}

void AppCoordinator::openRepository(const Repo &repo)
{
    VANTREL_ASSERT_UI_THREAD();
    StateStep step(*this);
    step.set(m_aiResultCache, std::make_shared<AIResultCache>(),
             &AppCoordinator::aiResultCacheChanged);
    step.set(m_route, Route(FilesRoute{repo}), &AppCoordinator::routeChanged);
    step.set(m_currentBranch, std::optional<QString>(), &AppCoordinator::currentBranchChanged);
    step.publish();
}

AppCoordinator::RouteKind AppCoordinator::routeKind() const
{
    static_assert(std::variant_size_v<Route> == 3);
    return RouteKind(m_route.index());
}

QString AppCoordinator::repositoryName() const
{
    const Repo *const repo = repository(m_route);
    return repo == nullptr ? QString() : repo->name;
}

QString AppCoordinator::branchName() const
{
    return m_currentBranch.value_or(QString());
}

} // namespace vantrel
