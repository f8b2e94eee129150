#pragma once

#include "git/ProcessRunner.h"
#include "git/RepositoryGuarding.h"
#include "git/RepositoryPrograms.h"

#include <QHash>

#include <mutex>

namespace vantrel {

/// Runs git so that a repository's configuration makes it run no program but those that the person
/// has allowed. What stands in the place of the others is found by `inspect`, and by each run in a
/// repository that was not inspected. Thread: any.
class RepositoryGuard final : public RepositoryGuarding, public ProcessRunning
{
public:
    [[nodiscard]] Result<QList<RepositoryProgram>, ProcessFailure>
    inspect(const QUrl &root) override;
    void allow(const QUrl &root, const QList<RepositoryProgram> &programs) override;

    /// Also fails, without running anything, where a program was not allowed.
    [[nodiscard]] Result<TextSlice, ProcessFailure>
    run(const QString &command, const QStringList &arguments, const QUrl &directory) const override;

private:
    [[nodiscard]] Result<RepositoryPrograms, ProcessFailure> programsOf(const QUrl &root) const;
    [[nodiscard]] QList<RepositoryProgram> notAllowed(const QUrl &root,
                                                      const RepositoryPrograms &programs) const;

    ProcessRunner m_runner{};
    mutable std::mutex m_mutex{};
    QHash<QUrl, RepositoryPrograms> m_inspected{}; ///< Guarded by `m_mutex`, as the next.
    QHash<QUrl, QList<RepositoryProgram>> m_allowed{};
};

} // namespace vantrel
