#pragma once

#include "git/GitServicing.h"
#include "support/CallLog.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <variant>

namespace vantrel::test {

/// A git service that answers when it is told. Each question is logged ("changedFiles /repo",
/// "rawHunks src/a.cpp in /repo", "currentBranch /repo") and blocks its thread until its answer is
/// there, as git would; an answer that is given before waits for its question.
class FakeGitService final : public GitServicing
{
public:
    using Listing = Result<QList<FileChange>, ProcessFailure>;
    using RawHunks = Result<QList<RawHunk>, ProcessFailure>;
    using Branch = Result<std::optional<QString>, ProcessFailure>;

    /// `log` must outlive the fake.
    explicit FakeGitService(CallLog &log);

    void answerChangedFiles(Listing listing);
    void answerRawHunks(RawHunks hunks);
    void answerCurrentBranch(Branch branch);

    /// Lets a listing report this, and go on blocking.
    void reportProgress(ListingProgress progress);

    /// Ends every question that is still open and every later one with a failure, so that the
    /// worker's thread can end. The last step of a test.
    void close();

    Listing changedFiles(const QUrl &repositoryRoot, const ListingControl &control) override;
    RawHunks rawHunks(const FileChange &file, const QUrl &repositoryRoot) override;
    Branch currentBranch(const QUrl &repositoryRoot) override;

private:
    using ListingStep = std::variant<ListingProgress, Listing>;

    template<typename Answer>
    std::optional<Answer> take(std::deque<Answer> &answers);

    template<typename Answer>
    void give(std::deque<Answer> &answers, Answer answer);

    CallLog &m_log;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<ListingStep> m_listingSteps{}; ///< Guarded by `m_mutex`, as the following.
    std::deque<RawHunks> m_rawHunks{};
    std::deque<Branch> m_branches{};
    bool m_isClosed = false;
};

} // namespace vantrel::test
