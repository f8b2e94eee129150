#include "ScreenDriver.h"

#include "Samples.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>

#include <algorithm>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

AIFailure missingKey()
{
    AIServiceError error;
    error.kind = AIServiceError::Case::missingAPIKey;
    return error;
}

bool isRead(const ExplanationChannel &explanation)
{
    return !explanation.isTerminated();
}

} // namespace

ScreenDriver::~ScreenDriver() = default;

void ScreenDriver::start(bool hasAcknowledgedNotice)
{
    m_isNarrativeKnown = true;
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
    answerListing(files);
}

void ScreenDriver::answerFileOfLine(const QString &line)
{
    answerListing({changedFile(u"src/file0.cpp"_s, {changedLine(1, u"old"_s, line)})});
}

void ScreenDriver::answerListing(const QList<FileChange> &files)
{
    if (m_isNarrativeKnown) {
        m_services->knowNarrative(files, QString());
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
    const auto &explanations = m_services->ai.explanations;
    return int(std::count_if(explanations.cbegin(), explanations.cend(), isRead));
}

void ScreenDriver::pushProse(const QString &text)
{
    openExplanation().push(ProseDelta{text});
}

void ScreenDriver::complete(const QString &tag, const QString &prose, const QStringList &points)
{
    HunkExplanation explanation;
    explanation.tag = tag;
    explanation.explanation = prose;
    explanation.points = points;
    openExplanation().push(ExplanationCompleted{explanation});
}

void ScreenDriver::failForMissingKey()
{
    openExplanation().fail(missingKey());
}

int ScreenDriver::summaryCount() const
{
    return int(m_services->ai.summaries.size());
}

void ScreenDriver::answerSummary(const QString &summary)
{
    m_services->ai.summaries.back().push(summary);
}

void ScreenDriver::failSummaryForMissingKey()
{
    m_services->ai.summaries.back().fail(missingKey());
}

int ScreenDriver::narrativeCount() const
{
    return int(m_services->ai.completions.size());
}

void ScreenDriver::answerNarrative(const QString &narrative)
{
    m_services->ai.completions.back().push(narrative);
}

int ScreenDriver::answerCount() const
{
    return int(m_services->ai.chats.size());
}

void ScreenDriver::pushAnswer(const QString &text)
{
    m_services->ai.chats.back().push(text);
}

void ScreenDriver::finishAnswer()
{
    m_services->ai.chats.back().finish();
}

void ScreenDriver::failAnswer(const QString &message)
{
    PlatformError error;
    error.message = message;
    m_services->ai.chats.back().fail(error);
}

void ScreenDriver::answerQuestions(const QStringList &questions)
{
    m_services->ai.suggestions.back().push(questions);
}

QString ScreenDriver::temptingAddress()
{
    if (!m_server.isListening()) {
        m_server.listen(QHostAddress::LocalHost);
    }
    return u"http://127.0.0.1:%1/a.png"_s.arg(m_server.serverPort());
}

QString ScreenDriver::clipboard() const
{
    return QGuiApplication::clipboard()->text();
}

ExplanationChannel &ScreenDriver::openExplanation()
{
    auto &explanations = m_services->ai.explanations;
    return *std::find_if(explanations.begin(), explanations.end(), isRead);
}

} // namespace vantrel::test
