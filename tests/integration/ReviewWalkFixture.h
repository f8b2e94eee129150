#pragma once

#include "SampleProcesses.h"
#include "app/OrbiskApp.h"
#include "git/GitEnvironment.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <algorithm>
#include <optional>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

/// The whole application but its window: real child processes on a real repository, real sockets to
/// the sample provider, preferences in a folder of their own.
class ReviewWalkFixture : public testing::Test
{
protected:
    static void SetUpTestSuite() { pinGitEnvironment(); }

    /// Makes the sample repository and starts the application, set up for the provider at
    /// `baseURL`.
    void start(const QString &baseURL)
    {
        m_repository = makeDemoRepository(m_folder.path());
        UserDefaults defaults(places().preferencesFolder);
        ASSERT_TRUE(defaults.setText(u"aiProvider"_s, u"custom"_s));
        ASSERT_TRUE(defaults.setText(u"aiBaseURL"_s, baseURL));
        ASSERT_TRUE(defaults.setText(u"aiModel"_s, u"sample"_s));
        ASSERT_TRUE(defaults.setBoolean(u"keychainAccessNotice.hasAcknowledged"_s, true));
        m_app.emplace(places());
    }

    [[nodiscard]] OrbiskApp::Places places() const
    {
        OrbiskApp::Places places;
        places.preferencesFolder = m_folder.filePath(u"preferences"_s);
        places.keychainService = u"com.orbisk.apikeys.tests"_s;
        return places;
    }

    RootViewModel &root() { return m_app->rootViewModel(); }

    void openRepository()
    {
        root().openFolder(QUrl::fromLocalFile(m_repository));
        spinUntil([this] { return root().fileList() != nullptr; });
        root().fileList()->load();
        spinUntil([this] { return !root().fileList()->isLoading(); });
    }

    /// The row of a file that is listed.
    [[nodiscard]] int rowOf(const QString &path)
    {
        const QList<FileChange> &files = root().fileList()->files();
        const auto found = std::find_if(files.cbegin(), files.cend(),
                                        [&](const FileChange &file) { return file.path == path; });
        EXPECT_NE(found, files.cend()) << qPrintable(path);
        return int(found - files.cbegin());
    }

    void openFile(const QString &path)
    {
        root().fileList()->openFile(rowOf(path));
        loadDiff();
    }

    void loadDiff()
    {
        ASSERT_NE(root().diff(), nullptr);
        root().diff()->load();
        spinUntil([this] { return !root().diff()->isLoading(); });
    }

    void awaitExplanation()
    {
        spinUntil([this] {
            const Hunk *const hunk = root().diff()->selectedHunk();
            return hunk != nullptr && !hunk->explanationState.isLoading() &&
                   !hunk->explanationState.isIdle();
        });
    }

    QTemporaryDir m_folder{};
    QString m_repository{};
    std::optional<OrbiskApp> m_app{};
};

} // namespace vantrel::test
