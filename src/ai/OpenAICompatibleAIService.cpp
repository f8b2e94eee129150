#include "ai/OpenAICompatibleAIService.h"

#include "ai/AIPrompts.h"
#include "ai/HunkExplanationStreamParser.h"
#include "ai/SseDeltaDecoder.h"
#include "ai/SuggestedQuestions.h"
#include "ai/config/AINotifications.h"
#include "ai/config/SettingsStoring.h"
#include "persistence/KeychainWorker.h"

#include <chrono>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto requestTimeout = 60s;
constexpr qsizetype largeRequest = 65'536; // Characters; writing so many takes about 1 ms.
constexpr int firstSuccess = 200;
constexpr int lastSuccess = 299;

AIServiceError serviceError(AIServiceError::Case kind)
{
    AIServiceError error;
    error.kind = kind;
    return error;
}

AIServiceError requestFailed(const QString &message)
{
    AIServiceError error;
    error.message = message;
    return error;
}

/// The endpoint below the base URL, with one slash between them.
QUrl endpoint(QUrl base)
{
    QString path = base.path(QUrl::FullyEncoded);
    while (path.endsWith(u'/')) {
        path.chop(1);
    }
    base.setPath(path + u"/chat/completions"_s, QUrl::TolerantMode);
    return base;
}

bool isLarge(const ChatCompletionRequest &request)
{
    qsizetype characters = 0;
    for (const ChatMessagePayload &message : request.messages) {
        for (const QString &piece : message.content) {
            characters += piece.size();
        }
    }
    return characters >= largeRequest;
}

QList<ChatMessagePayload> systemAndUser(const QString &system, const QStringList &user)
{
    return {ChatMessagePayload{u"system"_s, {system}}, ChatMessagePayload{u"user"_s, user}};
}

} // namespace

AIServiceError errorForStatus(int status)
{
    if (status == 401 || status == 403) {
        return serviceError(AIServiceError::Case::invalidAPIKey);
    }
    if (status == 402) {
        return requestFailed(u"Your AI provider account is out of credits. Add credits with your "
                             "provider, then try again."_s);
    }
    if (status == 429) {
        return requestFailed(u"Rate limited by the provider — try again in a moment."_s);
    }
    if (status >= 500 && status <= 599) {
        return requestFailed(u"The AI provider is having trouble (status "_s +
                             QString::number(status) + u"). Try again shortly."_s);
    }
    return requestFailed(u"Request failed (status "_s + QString::number(status) + u")."_s);
}

/// The keys that have been read; an empty one remembers that there is none. Thread: any.
class OpenAICompatibleAIService::KeyCache
{
public:
    struct Lookup
    {
        std::optional<QString> key{}; ///< Nothing when the keychain has not been asked.
        int generation = 0;
    };

    [[nodiscard]] Lookup find(AIProvider provider)
    {
        const std::lock_guard lock(m_cachedAPIKeysLock);
        const auto found = m_keys.find(provider);
        Lookup lookup;
        lookup.generation = m_generation;
        if (found != m_keys.end()) {
            lookup.key = found->second;
        }
        return lookup;
    }

    /// Keeps what was read, unless the configuration has changed since the lookup.
    void store(AIProvider provider, const QString &key, int generation)
    {
        const std::lock_guard lock(m_cachedAPIKeysLock);
        if (generation == m_generation) {
            m_keys[provider] = key;
        }
    }

    void clear()
    {
        const std::lock_guard lock(m_cachedAPIKeysLock);
        m_keys.clear();
        ++m_generation;
    }

private:
    std::mutex m_cachedAPIKeysLock; ///< Guards both fields; never held across a keychain read.
    std::map<AIProvider, QString> m_keys;
    int m_generation = 0;
};

OpenAICompatibleAIService::OpenAICompatibleAIService(HttpLoading &session,
                                                     SettingsStoring &settingsStore,
                                                     KeychainWorker &keychainStore,
                                                     NotificationCenter &notificationCenter)
    : m_session(session)
    , m_settingsStore(settingsStore)
    , m_keychainStore(keychainStore)
    , m_notificationCenter(notificationCenter)
    , m_cachedAPIKeys(std::make_shared<KeyCache>())
    , m_configChangeObserver(notificationCenter.observe(
          aiConfigurationDidChange, [keys = m_cachedAPIKeys] { keys->clear(); }))
{}

OpenAICompatibleAIService::~OpenAICompatibleAIService() = default;

Task<std::optional<QString>> OpenAICompatibleAIService::apiKey(AIProvider provider)
{
    const KeyCache::Lookup cached = m_cachedAPIKeys->find(provider);
    if (cached.key) {
        m_keyReads.erase(provider); // The cache has the key now.
        co_return cached.key->isEmpty() ? std::nullopt : cached.key;
    }
    // Requests that start together share one read, lest the person is asked once for each. The read
    // goes on without them: what it asked the person for is not asked again.
    const auto running = m_keyReads.find(provider);
    const bool isShared = running != m_keyReads.end() && !running->second.job.value() &&
                          running->second.generation == cached.generation;
    if (!isShared) {
        KeyRead read{SharedJob(readKey(provider, cached.generation)), cached.generation};
        m_keyReads.insert_or_assign(provider, std::move(read));
    }
    auto key = m_keyReads.at(provider).job.result();
    co_return co_await std::move(key);
}

Task<std::optional<QString>> OpenAICompatibleAIService::readKey(AIProvider provider, int generation)
{
    const std::optional<QString> stored = co_await m_keychainStore.apiKey(provider);
    if (stored && !stored->trimmed().isEmpty()) {
        m_cachedAPIKeys->store(provider, *stored, generation);
        co_return stored;
    }
    if (!requiresAPIKey(provider)) {
        m_cachedAPIKeys->store(provider, QString(), generation);
    }
    co_return std::nullopt;
}

Task<Result<ResolvedConfig, AIServiceError>> OpenAICompatibleAIService::resolveConfig()
{
    // A missing key is told before a blank model, and that before a bad address: the order in which
    // a person sets them up.
    const AIProviderConfig config = m_settingsStore.loadAIConfig();
    const std::optional<QString> key = co_await apiKey(config.provider);
    if (!key && requiresAPIKey(config.provider)) {
        m_notificationCenter.post(aiSetupRequired);
        co_return failure(serviceError(AIServiceError::Case::missingAPIKey));
    }
    if (config.model.trimmed().isEmpty()) {
        m_notificationCenter.post(aiSetupRequired);
        co_return failure(serviceError(AIServiceError::Case::blankModel));
    }
    const std::optional<QUrl> base = AIProviderConfig::validatedBaseURL(config.baseURL);
    if (!base) {
        co_return failure(serviceError(AIServiceError::Case::invalidBaseURL));
    }
    ResolvedConfig resolved;
    resolved.url = endpoint(*base);
    resolved.model = config.model;
    resolved.apiKey = key;
    co_return resolved;
}

Task<QByteArray> OpenAICompatibleAIService::encode(ChatCompletionRequest request)
{
    if (!isLarge(request)) {
        co_return encodeRequest(request);
    }
    // A prompt of ten megabytes takes longer than a frame.
    auto write = [request = std::move(request)](const WorkControl &) {
        return encodeRequest(request);
    };
    auto written = m_encoder.run(std::move(write));
    co_return co_await std::move(written);
}

Task<Result<HttpResponse, AIFailure>>
OpenAICompatibleAIService::send(QList<ChatMessagePayload> messages, bool stream)
{
    const auto config = co_await resolveConfig();
    if (!config) {
        co_return failure(AIFailure(config.error()));
    }
    ChatCompletionRequest body;
    body.model = config->model;
    body.messages = std::move(messages);
    body.stream = stream;
    HttpRequest request;
    request.url = config->url;
    request.method = "POST";
    request.headers.emplaceBack("Content-Type", "application/json");
    if (const std::optional<QString> &key = config->apiKey) {
        request.headers.emplaceBack("Authorization", "Bearer " + key->toUtf8());
    }
    auto encoded = encode(std::move(body));
    request.body = co_await std::move(encoded);
    request.timeout = requestTimeout;

    auto response = co_await m_session.load(std::move(request));
    if (!response) {
        co_return failure(AIFailure(response.error()));
    }
    if (response->status < firstSuccess || response->status > lastSuccess) {
        co_return failure(AIFailure(errorForStatus(response->status)));
    }
    co_return std::move(*response);
}

Task<Result<QString, AIFailure>> OpenAICompatibleAIService::ask(QList<ChatMessagePayload> messages)
{
    auto sending = send(std::move(messages), false);
    auto response = co_await std::move(sending);
    if (!response) {
        co_return failure(response.error());
    }
    QByteArray body;
    while (const auto part = co_await response->body.next()) {
        if (!*part) {
            co_return failure(AIFailure(part->error()));
        }
        body.append(**part);
    }
    const auto content = decodeResponseContent(body);
    if (!content) {
        co_return failure(AIFailure(serviceError(AIServiceError::Case::invalidResponse)));
    }
    co_return *content;
}

Task<Result<QString, AIFailure>> OpenAICompatibleAIService::complete(QString systemPrompt,
                                                                     QString userMessage)
{
    return ask(systemAndUser(systemPrompt, {userMessage}));
}

Task<Result<QString, AIFailure>> OpenAICompatibleAIService::summarizeFile(QString path,
                                                                          QString diffText)
{
    auto request =
        ask(systemAndUser(prompts::fileSummary(), prompts::fileSummaryMessage(path, diffText)));
    const auto reply = co_await std::move(request);
    if (!reply) {
        co_return failure(reply.error());
    }
    co_return reply->trimmed();
}

TextStream OpenAICompatibleAIService::streamCompletion(QList<ChatMessagePayload> messages)
{
    auto sending = send(std::move(messages), true);
    auto response = co_await std::move(sending);
    if (!response) {
        TextStream::Item error = failure(response.error());
        co_yield std::move(error);
        co_return;
    }
    SseDeltaDecoder decoder;
    while (!decoder.isDone()) {
        const auto block = co_await response->body.next();
        if (block && !*block) {
            TextStream::Item error = failure(AIFailure(block->error()));
            co_yield std::move(error);
            co_return;
        }
        const QStringList deltas = block ? decoder.feed(**block) : decoder.finish();
        for (const QString &delta : deltas) {
            TextStream::Item item = delta;
            co_yield std::move(item);
        }
        if (!block) {
            break;
        }
    }
}

ExplanationStream OpenAICompatibleAIService::explainHunk(QString path, QString hunkText,
                                                         QString fullPicture)
{
    TextStream deltas = streamCompletion(systemAndUser(
        prompts::hunkExplanation(), prompts::hunkExplanationMessage(path, hunkText, fullPicture)));
    HunkExplanationStreamParser parser;
    while (const auto delta = co_await deltas.next()) {
        if (!*delta) {
            ExplanationStream::Item error = failure(delta->error());
            co_yield std::move(error);
            co_return;
        }
        const QList<HunkExplanationStreamEvent> events = parser.feed(**delta);
        for (const HunkExplanationStreamEvent &event : events) {
            ExplanationStream::Item item = event;
            co_yield std::move(item);
        }
    }
    if (!parser.hasReceivedContent()) {
        const AIFailure nothing(serviceError(AIServiceError::Case::invalidResponse));
        ExplanationStream::Item error = failure(nothing);
        co_yield std::move(error);
        co_return;
    }
    const QList<HunkExplanationStreamEvent> events = parser.finish();
    for (const HunkExplanationStreamEvent &event : events) {
        ExplanationStream::Item item = event;
        co_yield std::move(item);
    }
}

TextStream OpenAICompatibleAIService::chatAboutHunk(QString path, QString hunkText,
                                                    QList<ChatMessage> conversation)
{
    QList<ChatMessagePayload> messages;
    messages.append(ChatMessagePayload{u"system"_s, prompts::followUp(path, hunkText)});
    for (const ChatMessage &message : conversation) {
        messages.append(ChatMessagePayload{prompts::roleName(message.role), {message.text}});
    }
    return streamCompletion(std::move(messages));
}

Task<Result<QStringList, AIFailure>>
OpenAICompatibleAIService::suggestQuestions(QString path, QString hunkText,
                                            QList<ChatMessage> conversation)
{
    auto request = ask(systemAndUser(prompts::suggestions(),
                                     prompts::suggestionsMessage(path, hunkText, conversation)));
    const auto reply = co_await std::move(request);
    if (!reply) {
        co_return failure(reply.error());
    }
    co_return parseSuggestedQuestions(*reply);
}

} // namespace vantrel
