#include "app/FileListViewModel.h"

#include "app/AppCoordinator.h"
#include "app/StateStep.h"
#include "git/GitWorker.h"
#include "platform/jobs/RunQueue.h"

#include <functional>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

FileListViewModel::FileListViewModel(Repo repo, GitWorker &gitWorker, AppCoordinator &coordinator,
                                     QObject *parent)
    : QObject(parent)
    , m_repo(std::move(repo))
    , m_gitWorker(gitWorker)
    , m_coordinator(coordinator)
{}

FileListViewModel::~FileListViewModel() = default;

QString FileListViewModel::errorMessage() const
{
    return m_errorMessage.value_or(QString());
}

void FileListViewModel::load()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_isLoading) {
        return;
    }
    m_loadTask = Job(runLoad());
    StateStep step(*this);
    step.set(m_isLoading, true, &FileListViewModel::isLoadingChanged);
    step.set(m_progress, ListingProgress(), &FileListViewModel::progressChanged);
    step.publish();
}

void FileListViewModel::openFile(int row)
{
    VANTREL_ASSERT_UI_THREAD();
    if (row < 0 || row >= m_files.size()) {
        return;
    }
    m_coordinator.setRoute(AppCoordinator::DiffRoute{m_repo, m_files.at(row), m_files,
                                                     AppCoordinator::InitialHunkSelection::first});
}

void FileListViewModel::goBack()
{
    VANTREL_ASSERT_UI_THREAD();
    m_coordinator.setRoute(AppCoordinator::PickerRoute());
}

void FileListViewModel::cancelAll()
{
    VANTREL_ASSERT_UI_THREAD();
    m_loadTask.cancel();
    StateStep step(*this);
    step.set(m_isLoading, false, &FileListViewModel::isLoadingChanged);
    step.publish();
}

Task<> FileListViewModel::runLoad()
{
    std::function<void(ListingProgress)> progress = [this](ListingProgress reached) {
        showProgress(reached);
    };
    auto listing = m_gitWorker.changedFiles(m_repo.url, std::move(progress));
    const auto files = co_await std::move(listing);
    if (!files) {
        showFailure(files.error());
        co_return;
    }
    showFiles(*files);

    auto naming = m_gitWorker.currentBranch(m_repo.url);
    const auto branch = co_await std::move(naming);
    // A branch that cannot be read is only hidden: the list is what the person came for.
    showEnd(branch.value_or(std::nullopt));
}

void FileListViewModel::showProgress(const ListingProgress &reached)
{
    StateStep step(*this);
    step.set(m_progress, reached, &FileListViewModel::progressChanged);
    step.publish();
}

void FileListViewModel::showFiles(const QList<FileChange> &files)
{
    StateStep step(*this);
    step.set(m_files, files, &FileListViewModel::filesChanged);
    step.publish();
}

void FileListViewModel::showFailure(const ProcessFailure &failure)
{
    const QString message = u"Couldn't read git status: "_s + failure.description();
    StateStep step(*this);
    step.set(m_files, QList<FileChange>(), &FileListViewModel::filesChanged);
    step.set(m_branch, std::optional<QString>(), &FileListViewModel::branchChanged);
    step.set(m_errorMessage, std::optional<QString>(message),
             &FileListViewModel::errorMessageChanged);
    endLoad(step);
}

void FileListViewModel::showEnd(const std::optional<QString> &branch)
{
    StateStep step(*this);
    step.set(m_branch, branch, &FileListViewModel::branchChanged);
    step.set(m_errorMessage, std::optional<QString>(), &FileListViewModel::errorMessageChanged);
    endLoad(step);
}

void FileListViewModel::endLoad(StateStep<FileListViewModel> &step)
{
    step.set(m_hasLoaded, true, &FileListViewModel::hasLoadedChanged);
    step.set(m_isLoading, false, &FileListViewModel::isLoadingChanged);
    m_coordinator.setCurrentBranch(m_branch); // For the title bar.
    step.publish();
}

} // namespace vantrel
