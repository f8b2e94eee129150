#include "SampleServices.h"

#include "SampleChanges.h"

#include "ai/HunkExplanationStreamEvent.h"

namespace vantrel::screenshots {

using namespace Qt::Literals::StringLiterals;

SampleGitService::Listing SampleGitService::changedFiles(const QUrl &, const ListingControl &)
{
    if (!m_listing) {
        m_gate.acquire();
        return QList<FileChange>();
    }
    return *m_listing;
}

SampleGitService::RawHunks SampleGitService::rawHunks(const FileChange &, const QUrl &)
{
    return m_rawHunks;
}

SampleGitService::Branch SampleGitService::currentBranch(const QUrl &)
{
    return std::optional(u"feature/token-refresh"_s);
}

std::optional<QString> SampleKeychain::apiKey(AIProvider provider)
{
    const auto found = m_keys.find(provider);
    return found == m_keys.end() ? std::nullopt : std::optional(found->second);
}

Result<void, KeychainError> SampleKeychain::saveAPIKey(const QString &key, AIProvider provider)
{
    m_keys[provider] = key;
    return {};
}

Result<void, KeychainError> SampleKeychain::deleteAPIKey(AIProvider provider)
{
    m_keys.erase(provider);
    return {};
}

Task<SampleSignIn::Outcome> SampleSignIn::obtainAPIKey()
{
    while (!m_outcome) {
        co_await m_never.wait();
    }
    co_return *m_outcome;
}

Task<LocalModelServerStatuses> SampleLocalDetector::detectAll()
{
    while (!m_statuses) {
        co_await m_never.wait();
    }
    co_return *m_statuses;
}

Task<Result<QString, AIFailure>> SampleAIService::complete(QString, QString)
{
    while (m_narrative.isEmpty()) {
        co_await m_never.wait();
    }
    co_return m_narrative;
}

Task<Result<QString, AIFailure>> SampleAIService::summarizeFile(QString path, QString)
{
    while (!m_summaries.contains(path)) {
        co_await m_never.wait();
    }
    co_return m_summaries.value(path);
}

ExplanationStream SampleAIService::explainHunk(QString, QString hunkText, QString)
{
    auto &channel = m_explanationChannels.emplace_back();
    const Explanation scripted = m_explanations.value(hunkText);
    if (!scripted.prose.isEmpty()) {
        channel.push(ProseDelta{scripted.prose});
    }
    if (scripted.explanation) {
        channel.push(ExplanationCompleted{*scripted.explanation});
        channel.finish();
    } else if (scripted.error) {
        channel.fail(*scripted.error);
    }
    return channel.stream();
}

TextStream SampleAIService::chatAboutHunk(QString, QString, QList<ChatMessage>)
{
    auto &channel = m_answerChannels.emplace_back();
    const Answer scripted = m_answers.isEmpty() ? Answer() : m_answers.takeFirst();
    if (!scripted.text.isEmpty()) {
        channel.push(scripted.text);
    }
    if (scripted.error) {
        channel.fail(*scripted.error);
    } else if (scripted.isComplete) {
        channel.finish();
    }
    return channel.stream();
}

Task<Result<QStringList, AIFailure>> SampleAIService::suggestQuestions(QString, QString,
                                                                       QList<ChatMessage>)
{
    co_return m_questions;
}

bool SampleRecentRepos::isRepository(const QString &path) const
{
    return path.startsWith(sampleHome()) && path != m_missing;
}

} // namespace vantrel::screenshots
