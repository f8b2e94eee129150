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
    lastExplanation().push(ProseDelta{text});
    runUntilIdle();
}

void OpenedFile::complete(const HunkExplanation &explanation)
{
    lastExplanation().push(ExplanationCompleted{explanation});
    runUntilIdle();
}

void OpenedFile::fail(const AIServiceError &error)
{
    lastExplanation().fail(error);
    runUntilIdle();
}

void OpenedFile::awaitExplanations(size_t count)
{
    runUntil([this, count] { return m_services.ai.explanations.size() == count; });
}

ExplanationChannel &OpenedFile::lastExplanation()
{
    runUntil([this] { return m_services.ai.explanations.size() > 0; });
    return m_services.ai.explanations.back();
}

} // namespace vantrel::test
