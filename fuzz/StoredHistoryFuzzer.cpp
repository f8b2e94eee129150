// Conversations are the same after they have been written and read again: those of any text, and
// those that can be read from any bytes.

#include "StoredRoundTrip.h"

#include "models/PersistedChatThreadCoding.h"

namespace {

using vantrel::ChatMessage;
using vantrel::PersistedChatThread;

/// A conversation that has the input's texts for everything that is text.
PersistedChatThread threadOf(QByteArrayView input)
{
    constexpr qsizetype fewest = 4;
    const QStringList texts = vantrel::fuzz::textsOf(input, fewest);
    PersistedChatThread thread;
    thread.filePath = texts.at(0);
    thread.diffText = texts.at(1);
    for (const QString &text : texts.sliced(2)) {
        const auto role = thread.messages.size() % 2 == 0 ? ChatMessage::Role::user
                                                          : ChatMessage::Role::assistant;
        thread.messages.append({QUuid(), role, text, false});
    }
    thread.suggestedQuestions = texts;
    thread.lastUpdated = vantrel::fuzz::momentOf(input);
    if (texts.size() > fewest) {
        thread.explanation = {texts.at(2), texts.at(3), texts, texts.sliced(1)};
    }
    return thread;
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    checkRead(input, persistedChatThreadFromJson);
    const PersistedChatThread thread = threadOf(input);
    checkWritten(QList{thread, thread}, persistedChatThreadFromJson);
}
