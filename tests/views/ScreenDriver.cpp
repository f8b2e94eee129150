#include "ScreenDriver.h"

#include "Samples.h"

#include <QDir>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

ScreenDriver::~ScreenDriver() = default;

void ScreenDriver::start(bool hasAcknowledgedNotice)
{
    m_root.reset();
    m_folder.emplace();
    m_services = std::make_unique<ScreenServices>();
    if (hasAcknowledgedNotice) {
        m_services->notice.acknowledge();
    }
    m_root = std::make_unique<RootViewModel>(m_services->review, m_services->recentRepos);
    Q_EMIT started();
}

void ScreenDriver::addRecentRepository(const QString &name)
{
    const QString path = m_folder->filePath(name);
    QDir().mkpath(path + u"/.git"_s);
    m_services->recentRepos->record(name, path);
    m_root->picker()->reloadRecents();
}

void ScreenDriver::removeRepositories()
{
    m_folder.reset();
}

void ScreenDriver::openRepository()
{
    m_services->coordinator.openRepository(sampleRepo(u"repo"_s));
}

void ScreenDriver::answerFiles(const QList<int> &hunkCounts)
{
    QList<FileChange> files;
    for (qsizetype i = 0; i < hunkCounts.size(); ++i) {
        files.append(changedFile(u"src/file%1.cpp"_s.arg(i), hunkCounts.at(i)));
    }
    m_services->git.answerChangedFiles(files);
    m_services->git.answerCurrentBranch(std::optional(u"main"_s));
}

void ScreenDriver::failListing(const QString &message)
{
    PlatformError error;
    error.message = message;
    m_services->git.answerChangedFiles(failure(ProcessFailure(error)));
}

void ScreenDriver::answerNoHunks()
{
    m_services->git.answerRawHunks(QList<RawHunk>());
}

int ScreenDriver::explanationCount() const
{
    return int(m_services->ai.explanations.size());
}

void ScreenDriver::pushProse(const QString &text)
{
    lastExplanation().push(ProseDelta{text});
}

void ScreenDriver::complete(const QString &tag, const QString &prose, const QStringList &points)
{
    HunkExplanation explanation;
    explanation.tag = tag;
    explanation.explanation = prose;
    explanation.points = points;
    lastExplanation().push(ExplanationCompleted{explanation});
}

void ScreenDriver::failForMissingKey()
{
    AIServiceError error;
    error.kind = AIServiceError::Case::missingAPIKey;
    lastExplanation().fail(error);
}

ExplanationChannel &ScreenDriver::lastExplanation()
{
    return m_services->ai.explanations.back();
}

} // namespace vantrel::test
