#pragma once

#include "ai/AIServicing.h"
#include "platform/jobs/Channel.h"
#include "support/CallLog.h"

#include <cstddef>
#include <deque>

namespace vantrel::test {

/// A model whose explanations say what the test pushes. Each request is logged
/// ("explainHunk a.cpp | <hunk text> | <full picture>"), and its end once nobody reads it any more
/// ("explanation 0 released"). Questions other than explanations fail the test. Thread: interface.
class FakeAIService final : public AIServicing
{
public:
    using ExplanationChannel = Channel<HunkExplanationStreamEvent, AIFailure>;

    /// `log` must outlive the fake and every stream that it handed out.
    explicit FakeAIService(CallLog &log);

    [[nodiscard]] std::size_t explanationCount() const { return m_explanations.size(); }

    /// The pushing side of the `number`th explanation that was asked for, from 0.
    ExplanationChannel &explanation(std::size_t number) { return m_explanations.at(number); }

    Task<Result<QString, AIFailure>> complete(QString systemPrompt, QString userMessage) override;
    Task<Result<QString, AIFailure>> summarizeFile(QString path, QString diffText) override;
    ExplanationStream explainHunk(QString path, QString hunkText, QString fullPicture) override;
    TextStream chatAboutHunk(QString path, QString hunkText,
                             QList<ChatMessage> conversation) override;
    Task<Result<QStringList, AIFailure>> suggestQuestions(QString path, QString hunkText,
                                                          QList<ChatMessage> conversation) override;

private:
    CallLog &m_log;
    std::deque<ExplanationChannel> m_explanations{};
};

} // namespace vantrel::test
