#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDebug>
#include <QList>

#include <cstdio>
#include <mutex>

namespace vantrel::test {

namespace {

struct Expectation
{
    QString part{};
    bool isMet = false;
};

std::mutex mutex;
QList<Expectation> expectations; // Guarded by `mutex`.

void handleMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    {
        const std::lock_guard lock(mutex);
        for (Expectation &expectation : expectations) {
            if (message.contains(expectation.part)) {
                expectation.isMet = true;
                return;
            }
        }
    }
    std::fprintf(stderr, "%s\n", qPrintable(message));
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        ADD_FAILURE() << "unexpected message: " << qPrintable(message);
    }
}

} // namespace

void installMessageHandler()
{
    qInstallMessageHandler(handleMessage);
}

void expectMessage(const QString &part)
{
    const std::lock_guard lock(mutex);
    expectations.append(Expectation{part, false});
}

void checkExpectedMessages()
{
    const std::lock_guard lock(mutex);
    for (const Expectation &expectation : std::as_const(expectations)) {
        EXPECT_TRUE(expectation.isMet) << "no message held: " << qPrintable(expectation.part);
    }
    expectations.clear();
}

} // namespace vantrel::test
