#pragma once

#include "git/RepositoryGuarding.h"

#include <mutex>

namespace vantrel::test {

/// A guard that finds in every repository what it is told, until something is allowed. Thread: any.
class FakeRepositoryGuard final : public RepositoryGuarding
{
public:
    struct Allowed
    {
        QUrl root{};
        QList<RepositoryProgram> programs{};

        bool operator==(const Allowed &) const = default;
    };
    using Programs = Result<QList<RepositoryProgram>, ProcessFailure>;

    void setPrograms(Programs programs);

    /// What was allowed, in this order.
    [[nodiscard]] QList<Allowed> allowed() const;

    Programs inspect(const QUrl &root) override;
    void allow(const QUrl &root, const QList<RepositoryProgram> &programs) override;

private:
    mutable std::mutex m_mutex{};
    Programs m_programs{QList<RepositoryProgram>()}; ///< Guarded by `m_mutex`, as the next.
    QList<Allowed> m_allowed{};
};

} // namespace vantrel::test
