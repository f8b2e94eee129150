#include "git/RepositoryGuard.h"

#include "git/RepositoryInspection.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

Result<QList<RepositoryProgram>, ProcessFailure> RepositoryGuard::inspect(const QUrl &root)
{
    const auto programs = inspectRepository(m_runner, root);
    if (!programs) {
        return failure(programs.error());
    }
    {
        const std::lock_guard lock(m_mutex);
        m_inspected.insert(root, *programs);
    }
    return notAllowed(root, *programs);
}

void RepositoryGuard::allow(const QUrl &root, const QList<RepositoryProgram> &programs)
{
    const std::lock_guard lock(m_mutex);
    m_allowed[root] += programs;
}

Result<TextSlice, ProcessFailure> RepositoryGuard::run(const QString &command,
                                                       const QStringList &arguments,
                                                       const QUrl &directory) const
{
    const auto programs = programsOf(directory);
    if (!programs) {
        return failure(programs.error());
    }
    if (!notAllowed(directory, *programs).isEmpty()) {
        return failure(ProcessFailure(PlatformError{
            u"The repository's configuration names programs that were not allowed to run."_s}));
    }
    return m_runner.runWith(environmentVariables(programs->overrides, arguments), command,
                            arguments, directory);
}

Result<RepositoryPrograms, ProcessFailure> RepositoryGuard::programsOf(const QUrl &root) const
{
    {
        const std::lock_guard lock(m_mutex);
        if (const auto inspected = m_inspected.constFind(root); inspected != m_inspected.cend()) {
            return *inspected;
        }
    }
    return inspectRepository(m_runner, root);
}

QList<RepositoryProgram> RepositoryGuard::notAllowed(const QUrl &root,
                                                     const RepositoryPrograms &programs) const
{
    const std::lock_guard lock(m_mutex);
    const QList<RepositoryProgram> allowed = m_allowed.value(root);
    QList<RepositoryProgram> rest = programs.needed;
    rest.removeIf(
        [&allowed](const RepositoryProgram &program) { return allowed.contains(program); });
    return rest;
}

} // namespace vantrel
