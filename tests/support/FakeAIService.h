#pragma once

#include "ai/AIServicing.h"
#include "platform/jobs/Channel.h"
#include "support/CallLog.h"

#include <cstddef>
#include <deque>

namespace vantrel::test {

using ExplanationChannel = Channel<HunkExplanationStreamEvent, AIFailure>;

/// A model that says what the test pushes. Each request is logged with its arguments
/// ("explainHunk a.cpp | <hunk text> | <full picture>"), and its end once nobody reads it any more
/// ("explainHunk 0 released"). A request that is answered whole takes the first text pushed for it.
/// Thread: interface.
class FakeAIService final : public AIServicing
{
public:
    template<typename Value>
    using Requests = std::deque<Channel<Value, AIFailure>>;

    /// `log` must outlive the fake and every stream that it handed out.
    explicit FakeAIService(CallLog &log);

    /// The pushing sides of the requests made so far, in order, by operation.
    Requests<QString> completions{};
    Requests<QString> summaries{};
    Requests<HunkExplanationStreamEvent> explanations{};
    Requests<QString> chats{};
    Requests<QStringList> suggestions{};

    Task<Result<QString, AIFailure>> complete(QString systemPrompt, QString userMessage) override;
    Task<Result<QString, AIFailure>> summarizeFile(QString path, QString diffText) override;
    ExplanationStream explainHunk(QString path, QString hunkText, QString fullPicture) override;
    TextStream chatAboutHunk(QString path, QString hunkText,
                             QList<ChatMessage> conversation) override;
    Task<Result<QStringList, AIFailure>> suggestQuestions(QString path, QString hunkText,
                                                          QList<ChatMessage> conversation) override;

private:
    template<typename Value>
    Stream<Value, AIFailure> request(Requests<Value> &requests, const QString &operation,
                                     const QStringList &arguments);

    CallLog &m_log;
};

} // namespace vantrel::test
