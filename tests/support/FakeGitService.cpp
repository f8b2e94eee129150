#include "support/FakeGitService.h"

#include <utility>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

ProcessFailure closedFailure()
{
    PlatformError error;
    error.message = u"the fake git service was closed"_s;
    return error;
}

} // namespace

FakeGitService::FakeGitService(CallLog &log)
    : m_log(log)
{}

void FakeGitService::answerChangedFiles(Listing listing)
{
    give(m_listingSteps, ListingStep(std::move(listing)));
}

void FakeGitService::answerRawHunks(RawHunks hunks)
{
    give(m_rawHunks, std::move(hunks));
}

void FakeGitService::answerCurrentBranch(Branch branch)
{
    give(m_branches, std::move(branch));
}

void FakeGitService::reportProgress(ListingProgress progress)
{
    give(m_listingSteps, ListingStep(progress));
}

void FakeGitService::close()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
    }
    m_changed.notify_all();
}

FakeGitService::Listing FakeGitService::changedFiles(const QUrl &repositoryRoot,
                                                     const ListingControl &control)
{
    m_log.append(u"changedFiles "_s + repositoryRoot.toLocalFile());
    while (auto step = take(m_listingSteps)) {
        if (auto *const listing = std::get_if<Listing>(&*step)) {
            return std::move(*listing);
        }
        control.report(std::get<ListingProgress>(*step));
    }
    return failure(closedFailure());
}

FakeGitService::RawHunks FakeGitService::rawHunks(const FileChange &file,
                                                  const QUrl &repositoryRoot)
{
    m_log.append(u"rawHunks %1 in %2"_s.arg(file.path, repositoryRoot.toLocalFile()));
    return take(m_rawHunks).value_or(failure(closedFailure()));
}

FakeGitService::Branch FakeGitService::currentBranch(const QUrl &repositoryRoot)
{
    m_log.append(u"currentBranch "_s + repositoryRoot.toLocalFile());
    return take(m_branches).value_or(failure(closedFailure()));
}

template<typename Answer>
std::optional<Answer> FakeGitService::take(std::deque<Answer> &answers)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_isClosed || !answers.empty(); });
    if (answers.empty()) {
        return std::nullopt;
    }
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

template<typename Answer>
void FakeGitService::give(std::deque<Answer> &answers, Answer answer)
{
    {
        const std::lock_guard lock(m_mutex);
        answers.push_back(std::move(answer));
    }
    m_changed.notify_all();
}

} // namespace vantrel::test
