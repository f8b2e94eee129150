#pragma once

#include "Samples.h"
#include "ScreenServices.h"
#include "ai/AIResultCache.h"
#include "ai/config/AINotifications.h"
#include "app/FileListViewModel.h"

#include <gtest/gtest.h>

#include <memory>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

inline const QString listingAsked = u"changedFiles /orchard"_s;
inline const QString branchAsked = u"currentBranch /orchard"_s;

inline ProcessFailure gitFailure()
{
    ProcessRunnerError error;
    error.status = 128;
    error.message = u"fatal: not a git repository\n"_s;
    return error;
}

/// A file list over scripted services, with every signal in their log.
class FileListViewModelFixture : public testing::Test
{
protected:
    FileListViewModelFixture() { makeViewModel(); }

    void makeViewModel()
    {
        viewModel = std::make_unique<FileListViewModel>(sampleRepo(u"orchard"_s), services.review);
        record(&FileListViewModel::filesChanged, u"filesChanged"_s);
        record(&FileListViewModel::branchChanged, u"branchChanged"_s);
        record(&FileListViewModel::isLoadingChanged, u"isLoadingChanged"_s);
        record(&FileListViewModel::hasLoadedChanged, u"hasLoadedChanged"_s);
        record(&FileListViewModel::errorMessageChanged, u"errorMessageChanged"_s);
        record(&FileListViewModel::progressChanged, u"progressChanged"_s);
    }

    void record(void (FileListViewModel::*signal)(), const QString &name)
    {
        QObject::connect(viewModel.get(), signal, [this, name] { services.log.append(name); });
    }

    /// Loads to the end with these answers.
    void load(FakeGitService::Listing listing, FakeGitService::Branch branch)
    {
        services.git.answerChangedFiles(std::move(listing));
        services.git.answerCurrentBranch(std::move(branch));
        viewModel->load();
        runUntil([this] { return !viewModel->isLoading(); });
    }

    /// What has been logged since the last call.
    QStringList newEntries()
    {
        const QStringList all = services.log.entries();
        const QStringList entries = all.mid(seen);
        seen = all.size();
        return entries;
    }

    ScreenServices services{};
    std::unique_ptr<FileListViewModel> viewModel{};
    qsizetype seen = 0;
    const QList<FileChange> files{changedFile(u"a.cpp"_s, 1), changedFile(u"b.cpp"_s, 2)};
    const std::optional<QString> mainBranch = u"main"_s;
};

} // namespace vantrel::test
