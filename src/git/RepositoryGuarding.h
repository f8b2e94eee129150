#pragma once

#include "git/ProcessRunnerError.h"
#include "git/RepositoryProgram.h"
#include "platform/Result.h"

#include <QList>
#include <QUrl>

namespace vantrel {

/// Finds the programs that a repository's own configuration makes git run, before the repository is
/// read. Thread: any, also several at once.
class RepositoryGuarding
{
public:
    RepositoryGuarding() = default;
    RepositoryGuarding(const RepositoryGuarding &) = delete;
    RepositoryGuarding &operator=(const RepositoryGuarding &) = delete;
    virtual ~RepositoryGuarding() = default;

    /// The programs that have to run, since the changes would be others without them, and that
    /// nobody has allowed in this run of the application. From now on git is kept from running any
    /// others. Blocks until git has answered; fails as git does.
    [[nodiscard]] virtual Result<QList<RepositoryProgram>, ProcessFailure>
    inspect(const QUrl &root) = 0;

    /// The person has read these and opens the repository anyway.
    virtual void allow(const QUrl &root, const QList<RepositoryProgram> &programs) = 0;
};

} // namespace vantrel
