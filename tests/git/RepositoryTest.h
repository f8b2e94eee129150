#pragma once

#include "git/FileSystemReader.h"
#include "git/GitService.h"
#include "git/RepositoryGuard.h"
#include "support/TemporaryRepository.h"

#include "EnvironmentRestorer.h"

#include <gtest/gtest.h>

namespace vantrel::test {

/// The real service on a real repository, with the pinned environment and a home without
/// configuration.
class RepositoryTest : public testing::Test
{
protected:
    using Listing = Result<QList<FileChange>, ProcessFailure>;

    RepositoryTest();

    [[nodiscard]] Listing changedFiles();

    /// What git says about the failure: its status and the first line of its message.
    [[nodiscard]] static QString failureOf(const Listing &listing);

    EnvironmentRestorer m_environment;
    TemporaryRepository m_repository;
    RepositoryGuard m_guard;
    FileSystemReader m_reader;
    GitService m_service{m_guard, m_reader};
};

/// A file of lines that each hold their number, from 1 to `count`, but for the `changed` ones.
[[nodiscard]] QByteArray numberedLines(int count, const QList<int> &changed = {});

} // namespace vantrel::test
