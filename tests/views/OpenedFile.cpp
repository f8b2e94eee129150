#include "OpenedFile.h"

#include "Samples.h"

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

OpenedFile::OpenedFile(const FileChange &file, const QList<FileChange> &neighbours)
{
    m_services.notice.acknowledge();
    AppCoordinator::DiffRoute route;
    route.repo = sampleRepo(u"repo"_s);
    route.file = file;
    route.allFiles = QList<FileChange>{file} + neighbours;
    route.changeset = Changeset(route.allFiles);
    m_services.knowNarrative(route.allFiles, QString());
    m_diff = std::make_unique<DiffViewModel>(route, m_services.review);
    if (file.hunks.isEmpty()) {
        m_services.git.answerRawHunks(QList<RawHunk>());
    }
    m_diff->load();
    runUntil([this] { return !m_diff->isLoading(); });
}

void OpenedFile::pushProse(const QString &text)
{
    openExplanation().push(ProseDelta{text});
    runUntilIdle();
}

void OpenedFile::complete(const HunkExplanation &explanation)
{
    openExplanation().push(ExplanationCompleted{explanation});
    runUntilIdle();
}

void OpenedFile::completeInBackground(const HunkExplanation &explanation)
{
    awaitExplanations(2);
    m_services.ai.explanations.at(1).push(ExplanationCompleted{explanation});
    runUntilIdle();
}

void OpenedFile::fail(const AIServiceError &error)
{
    openExplanation().fail(error);
    runUntilIdle();
}

void OpenedFile::awaitExplanations(size_t count)
{
    runUntil([this, count] { return m_services.ai.explanations.size() >= count; });
}

ExplanationChannel &OpenedFile::openExplanation()
{
    awaitExplanations(1);
    return m_services.ai.explanations.front();
}

} // namespace vantrel::test
