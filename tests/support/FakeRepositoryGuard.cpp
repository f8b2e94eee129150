#include "support/FakeRepositoryGuard.h"

#include <utility>

namespace vantrel::test {

void FakeRepositoryGuard::setPrograms(Programs programs)
{
    const std::lock_guard lock(m_mutex);
    m_programs = std::move(programs);
}

QList<FakeRepositoryGuard::Allowed> FakeRepositoryGuard::allowed() const
{
    const std::lock_guard lock(m_mutex);
    return m_allowed;
}

FakeRepositoryGuard::Programs FakeRepositoryGuard::inspect(const QUrl &)
{
    const std::lock_guard lock(m_mutex);
    return m_programs;
}

void FakeRepositoryGuard::allow(const QUrl &root, const QList<RepositoryProgram> &programs)
{
    const std::lock_guard lock(m_mutex);
    m_allowed.append(Allowed{root, programs});
    m_programs = QList<RepositoryProgram>();
}

} // namespace vantrel::test
