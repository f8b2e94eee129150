#pragma once

#include "ai/AIPrompts.h"
#include "ai/AIServicing.h"
#include "platform/jobs/SerialQueue.h"

namespace vantrel {

/// The model's service behind a queue: operations run one at a time, in order of call. A stream is
/// handed out at once and read by its caller while the worker is free for the next call.
/// Thread: interface.
class AIWorker final
{
public:
    /// `service` must outlive the worker.
    explicit AIWorker(AIServicing &service);

    Task<Result<QString, AIFailure>> complete(QString systemPrompt, QString userMessage);
    Task<Result<QString, AIFailure>> summarizeFile(QString path, QString diffText);
    Task<Result<QString, AIFailure>> summarizeChangeset(QList<ChangesetEntry> entries);
    ExplanationStream explainHunk(QString path, QString hunkText, QString fullPicture);
    TextStream chatAboutHunk(QString path, QString hunkText, QList<ChatMessage> conversation);
    Task<Result<QStringList, AIFailure>> suggestQuestions(QString path, QString hunkText,
                                                          QList<ChatMessage> conversation);

private:
    AIServicing &m_service;
    SerialQueue m_queue;
};

} // namespace vantrel
