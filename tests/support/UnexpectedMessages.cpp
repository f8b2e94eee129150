#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDebug>
#include <QList>

#include <cstdio>
#include <mutex>
#include <utility>

namespace vantrel::test {

namespace {

struct Expectation
{
    QString part{};
    bool isForOne = false;
    bool isMet = false;
};

struct Expectations
{
    std::mutex mutex{};
    QList<Expectation> list{}; ///< Guarded by `mutex`.
};

/// Never destroyed: messages come until the process has ended.
Expectations &expectations()
{
    static auto *const all = new Expectations;
    return *all;
}

void handleMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    {
        const std::lock_guard lock(expectations().mutex);
        for (Expectation &expectation : expectations().list) {
            const bool isOpen = !expectation.isForOne || !expectation.isMet;
            if (isOpen && message.contains(expectation.part)) {
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

void expect(const Expectation &expectation)
{
    const std::lock_guard lock(expectations().mutex);
    expectations().list.append(expectation);
}

} // namespace

void installMessageHandler()
{
    qInstallMessageHandler(handleMessage);
}

void expectMessage(const QString &part)
{
    expect({part, false, false});
}

void expectOneMessage(const QString &part)
{
    expect({part, true, false});
}

void checkExpectedMessages()
{
    const std::lock_guard lock(expectations().mutex);
    for (const Expectation &expectation : std::as_const(expectations().list)) {
        EXPECT_TRUE(expectation.isMet) << "no message held: " << qPrintable(expectation.part);
    }
    expectations().list.clear();
}

} // namespace vantrel::test
