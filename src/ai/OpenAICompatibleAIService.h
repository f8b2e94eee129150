#pragma once

#include "ai/AIServicing.h"
#include "ai/CompletionCoding.h"
#include "ai/config/AIProvider.h"
#include "platform/NotificationCenter.h"
#include "platform/http/HttpLoading.h"
#include "platform/jobs/SerialWorker.h"
#include "platform/jobs/SharedJob.h"

#include <QString>
#include <QUrl>

#include <map>
#include <memory>
#include <mutex>
#include <optional>

namespace vantrel {

class KeychainWorker;
class SettingsStoring;

/// Where and how one request is sent.
struct ResolvedConfig
{
    QUrl url{};      ///< The endpoint.
    QString model{}; ///< As stored.
    std::optional<QString> apiKey{};

    bool operator==(const ResolvedConfig &) const = default;
};

/// The error for an HTTP status outside 200 to 299; -1 stands for an answer that is not HTTP.
[[nodiscard]] AIServiceError errorForStatus(int status);

/// The model behind any server that speaks the OpenAI chat-completions protocol.
///
/// Each request reads the configuration afresh. Keys are read from the keychain at most once
/// between changes of the configuration, since reading one may ask the person for a password; that
/// there is none is remembered too. A request that fails is not repeated. Thread: interface, but
/// for the announcement of a changed configuration, which may come on any.
class OpenAICompatibleAIService final : public AIServicing
{
public:
    /// All must outlive the service.
    OpenAICompatibleAIService(HttpLoading &session, SettingsStoring &settingsStore,
                              KeychainWorker &keychainStore,
                              NotificationCenter &notificationCenter);
    ~OpenAICompatibleAIService() override;

    /// The configuration of the next request. Announces that the setup is needed when a key or a
    /// model is missing.
    Task<Result<ResolvedConfig, AIServiceError>> resolveConfig();

    Task<Result<QString, AIFailure>> complete(QString systemPrompt, QString userMessage) override;
    Task<Result<QString, AIFailure>> summarizeFile(QString path, QString diffText) override;
    ExplanationStream explainHunk(QString path, QString hunkText, QString fullPicture) override;
    TextStream chatAboutHunk(QString path, QString hunkText,
                             QList<ChatMessage> conversation) override;
    Task<Result<QStringList, AIFailure>> suggestQuestions(QString path, QString hunkText,
                                                          QList<ChatMessage> conversation) override;

    /// The text deltas of one streamed reply.
    TextStream streamCompletion(QList<ChatMessagePayload> messages);

private:
    class KeyCache;

    /// A keychain read that several requests may wait for.
    struct KeyRead
    {
        SharedJob<std::optional<QString>> job;
        int generation = 0; ///< Of the configuration that it was begun for.
    };

    Task<std::optional<QString>> apiKey(AIProvider provider);
    Task<std::optional<QString>> readKey(AIProvider provider, int generation);
    Task<QByteArray> encode(ChatCompletionRequest request);
    Task<Result<QString, AIFailure>> ask(QList<ChatMessagePayload> messages);
    Task<Result<HttpResponse, AIFailure>> send(QList<ChatMessagePayload> messages, bool stream);

    HttpLoading &m_session;
    SettingsStoring &m_settingsStore;
    KeychainWorker &m_keychainStore;
    NotificationCenter &m_notificationCenter;
    std::shared_ptr<KeyCache> m_cachedAPIKeys;
    std::map<AIProvider, KeyRead> m_keyReads; ///< The last of each provider.
    SerialWorker m_encoder{};                 ///< Writes the large requests.
    NotificationCenter::Token m_configChangeObserver;
};

} // namespace vantrel
