#pragma once

#include "Samples.h"
#include "ScreenServices.h"
#include "ai/AIResultCache.h"
#include "ai/config/AINotifications.h"
#include "app/DiffViewModel.h"
#include "models/DisplayedHunks.h"
#include "platform/jobs/RunQueue.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;
using Selection = AppCoordinator::InitialHunkSelection;
using State = LoadableState<HunkExplanation>;

inline AIFailure missingKey()
{
    AIServiceError error;
    error.kind = AIServiceError::Case::missingAPIKey;
    return error;
}

inline AIFailure networkFailure()
{
    PlatformError error;
    error.message = u"Connection refused"_s;
    return error;
}

inline State failedWith(const AIFailure &aiFailure)
{
    return State::failed(aiFailure.description());
}

inline HunkExplanation sampleExplanation()
{
    return {u"Bug fix"_s, u"Keeps the last plum."_s, {u"No more loss"_s}, {u"Tested?"_s}};
}

inline HunkExplanationStreamEvent prose(const QString &text)
{
    return ProseDelta{text};
}

inline HunkExplanationStreamEvent completed()
{
    return ExplanationCompleted{sampleExplanation()};
}

inline ProcessFailure gitFailure()
{
    ProcessRunnerError error;
    error.status = 128;
    error.message = u"fatal: bad revision\n"_s;
    return error;
}

/// What the model has said of the whole change set before a file is opened.
inline const QString narrative = u"The full picture."_s;

/// The request for hunk `index` of a sample file, as the model's log shows it.
inline QString asked(const QString &path, int index)
{
    return u"explainHunk %1 | -old %2\n+new %2 | %3"_s.arg(path).arg(index).arg(narrative);
}

/// Makes `call` once so many of the coroutines that are ready have run, before any answer that the
/// last of them waits for: what is posted before a coroutine runs is called before what it asks
/// for.
inline void afterTurns(int turns, const std::function<void()> &call)
{
    RunQueue::interfaceThread().postFromThread([turns, call] {
        if (turns == 0) {
            call();
        } else {
            afterTurns(turns - 1, call);
        }
    });
}

/// A diff screen over scripted services, with every signal in their log once it is made.
class DiffViewModelFixture : public testing::Test
{
protected:
    void makeViewModel(const FileChange &file, const QList<FileChange> &allFiles,
                       Selection selection = Selection::first)
    {
        services.knowNarrative(allFiles, narrative);
        makeViewModelWithoutNarrative(file, allFiles, selection);
    }

    [[nodiscard]] AppCoordinator::DiffRoute
    diffRoute(const FileChange &file, const QList<FileChange> &allFiles, Selection selection) const
    {
        return {repo, file, allFiles, Changeset(allFiles), selection};
    }

    void makeViewModelWithoutNarrative(const FileChange &file, const QList<FileChange> &allFiles,
                                       Selection selection = Selection::first)
    {
        viewModel =
            std::make_unique<DiffViewModel>(diffRoute(file, allFiles, selection), services.review);
        record(&DiffViewModel::hunksChanged, u"hunksChanged"_s);
        record(&DiffViewModel::selectedHunkIndexChanged, u"selectedHunkIndexChanged"_s);
        record(&DiffViewModel::isLoadingChanged, u"isLoadingChanged"_s);
        record(&DiffViewModel::errorMessageChanged, u"errorMessageChanged"_s);
        record(&DiffViewModel::canGoChanged, u"canGoChanged"_s);
        QObject::connect(viewModel.get(), &DiffViewModel::explanationChanged, [this](int index) {
            services.log.append(u"explanationChanged %1"_s.arg(index));
        });
    }

    void record(void (DiffViewModel::*signal)(), const QString &name)
    {
        QObject::connect(viewModel.get(), signal, [this, name] { services.log.append(name); });
    }

    void load()
    {
        viewModel->load();
        runUntil([this] { return !viewModel->isLoading(); });
    }

    /// Opens the middle one of three files, which has `hunkCount` hunks, with the notice
    /// acknowledged, the selected hunk's explanation asked for and, with more hunks than one, that
    /// of the first of the others too; forgets the log so far.
    void openWithBackgroundRun(int hunkCount, Selection selection = Selection::first)
    {
        services.notice.acknowledge();
        makeViewModel(changedFile(u"b.cpp"_s, hunkCount), listing(hunkCount), selection);
        load();
        waitForExplanations(hunkCount > 1 ? 2 : 1);
        newEntries();
    }

    /// The same, with the background run stopped and its request forgotten.
    void open(int hunkCount, Selection selection = Selection::first)
    {
        openWithBackgroundRun(hunkCount, selection);
        if (hunkCount > 1) {
            fail(1, networkFailure());
            services.ai.explanations.pop_back();
        }
        newEntries();
    }

    static QList<FileChange> listing(int hunkCount)
    {
        return {changedFile(u"a.cpp"_s, 1), changedFile(u"b.cpp"_s, hunkCount),
                changedFile(u"c.cpp"_s, 1)};
    }

    /// Pushes one event of the `number`th explanation and lets it arrive.
    void push(std::size_t number, HunkExplanationStreamEvent event)
    {
        services.ai.explanations.at(number).push(std::move(event));
        runUntilIdle();
    }

    void fail(std::size_t number, const AIFailure &aiFailure)
    {
        services.ai.explanations.at(number).fail(aiFailure);
        runUntilIdle();
    }

    void changeConfiguration()
    {
        services.notificationCenter.post(aiConfigurationDidChange);
        runUntilIdle();
    }

    void waitForExplanations(std::size_t count)
    {
        runUntil([this, count] { return services.ai.explanations.size() == count; });
    }

    [[nodiscard]] State state(int index) const
    {
        return viewModel->hunks().at(index).explanationState;
    }

    [[nodiscard]] QList<State> states() const
    {
        QList<State> all;
        for (const Hunk &hunk : viewModel->hunks()) {
            all.append(hunk.explanationState);
        }
        return all;
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
    std::unique_ptr<DiffViewModel> viewModel{};
    qsizetype seen = 0;
    const Repo repo = sampleRepo(u"orchard"_s);
};

} // namespace vantrel::test
