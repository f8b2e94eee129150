#include "FakeRecentRepos.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

void FakeRecentRepos::hangNext(const QString &call)
{
    const std::lock_guard lock(m_mutex);
    m_callToHang = call;
}

void FakeRecentRepos::letGo()
{
    {
        const std::lock_guard lock(m_mutex);
        m_hangs = false;
    }
    m_changed.notify_all();
}

void FakeRecentRepos::waitForHang() const
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_hangs; });
}

QList<RecentRepo> FakeRecentRepos::load() const
{
    std::unique_lock lock(m_mutex);
    const QList<RecentRepo> repos(m_repos.crbegin(), m_repos.crend());
    logAndHang(lock, u"load"_s);
    return repos;
}

void FakeRecentRepos::record(const QString &name, const QString &path)
{
    std::unique_lock lock(m_mutex);
    logAndHang(lock, u"record %1 %2"_s.arg(name, path));
    std::erase_if(m_repos, [&path](const RecentRepo &repo) { return repo.path == path; });
    m_repos.push_back(RecentRepo{QUuid::createUuidV5(QUuid(), path), name, path, {}});
}

bool FakeRecentRepos::isRepository(const QString &path) const
{
    return QFileInfo::exists(path + u"/.git"_s);
}

void FakeRecentRepos::logAndHang(std::unique_lock<std::mutex> &lock, const QString &call) const
{
    log.append(call);
    if (call == m_callToHang) {
        m_callToHang.clear();
        m_hangs = true;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return !m_hangs; });
    }
}

} // namespace vantrel::test
