#pragma once

#include "ai/AIServiceError.h"
#include "ai/HunkExplanationStreamEvent.h"
#include "models/ChatMessage.h"
#include "platform/Result.h"
#include "platform/jobs/Stream.h"
#include "platform/jobs/Task.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace vantrel {

using ExplanationStream = Stream<HunkExplanationStreamEvent, AIFailure>;
using TextStream = Stream<QString, AIFailure>;

/// What the application asks of a model. Destroying a task or a stream cancels its request.
/// Thread: interface; nothing here blocks.
class AIServicing
{
public:
    AIServicing() = default;
    AIServicing(const AIServicing &) = delete;
    AIServicing &operator=(const AIServicing &) = delete;
    virtual ~AIServicing() = default;

    /// The whole reply to one request, untrimmed.
    virtual Task<Result<QString, AIFailure>> complete(QString systemPrompt,
                                                      QString userMessage) = 0;

    /// One sentence on a file's diff.
    virtual Task<Result<QString, AIFailure>> summarizeFile(QString path, QString diffText) = 0;

    /// `fullPicture` is the narrative of the change set; may be empty.
    virtual ExplanationStream explainHunk(QString path, QString hunkText, QString fullPicture) = 0;

    /// The answer to the last message of `conversation`.
    virtual TextStream chatAboutHunk(QString path, QString hunkText,
                                     QList<ChatMessage> conversation) = 0;

    /// Follow-up questions; an empty list when the reply holds none.
    virtual Task<Result<QStringList, AIFailure>>
    suggestQuestions(QString path, QString hunkText, QList<ChatMessage> conversation) = 0;
};

} // namespace vantrel
