#include "persistence/NumberedHistory.h"

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QDateTime &beginning()
{
    static const QDateTime date(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
    return date;
}

} // namespace

PersistedChatThread numberedThread(int number)
{
    const QString text = u"%1 "_s.arg(number).repeated(100'000);
    PersistedChatThread thread;
    thread.filePath = u"file%1.cpp"_s.arg(number % 3);
    thread.diffText = u"-a"_s;
    thread.messages = {ChatMessage{QUuid::createUuidV5(QUuid(), thread.filePath),
                                   ChatMessage::Role::user, text.first(200'000), false}};
    thread.lastUpdated = beginning().addSecs(number);
    return thread;
}

QList<PersistedChatThread> numberedHistory(int number)
{
    return {numberedThread(number), numberedThread(number - 1), numberedThread(number - 2)};
}

int newestNumber(const QList<PersistedChatThread> &history)
{
    return history.isEmpty() ? 0 : int(beginning().secsTo(history.first().lastUpdated));
}

} // namespace vantrel::test
