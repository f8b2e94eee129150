// A program that does nothing but log, as its arguments say, one after another:
//   debug TEXT, info TEXT, warning TEXT, critical TEXT, fatal TEXT
//              a message of this type, in a category of the application's
//   default TEXT
//              a warning in no category
//   odd        a message that holds what no line should
//   flood N    N messages, "message 1" and so on
//   exit       ends at once, as a library does
//   wait       prints "waiting", and waits for the end of standard input

#include "platform/log/SystemLog.h"

#include <QLoggingCategory>
#include <QStringList>

#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>

namespace {

using namespace Qt::Literals::StringLiterals;

Q_LOGGING_CATEGORY(probeLog, "com.orbisk.app.Probe")

void log(const QString &type, const QByteArray &text)
{
    if (type == "debug"_L1) {
        qCDebug(probeLog, "%s", text.constData());
    } else if (type == "info"_L1) {
        qCInfo(probeLog, "%s", text.constData());
    } else if (type == "warning"_L1) {
        qCWarning(probeLog, "%s", text.constData());
    } else if (type == "critical"_L1) {
        qCCritical(probeLog, "%s", text.constData());
    } else if (type == "default"_L1) {
        qWarning("%s", text.constData());
    } else {
        qFatal("%s", text.constData());
    }
}

void carryOut(QStringList steps)
{
    while (!steps.isEmpty()) {
        const QString step = steps.takeFirst();
        if (step == "odd"_L1) {
            qCInfo(probeLog).noquote() << u"one\ntwo\0three\x1b[31m"_s + QChar(0xd800);
        } else if (step == "flood"_L1) {
            const int count = steps.takeFirst().toInt();
            for (int i = 1; i <= count; ++i) {
                qCInfo(probeLog, "message %d", i);
            }
        } else if (step == "exit"_L1) {
            std::exit(0);
        } else if (step == "wait"_L1) {
            std::puts("waiting");
            std::fflush(stdout);
            while (std::getchar() != EOF) {
            }
        } else {
            log(step, steps.takeFirst().toUtf8());
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    // A fatal message is to leave nothing behind.
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    vantrel::logToSystem();
    QStringList steps;
    for (int i = 1; i < argc; ++i) {
        steps.append(QString::fromLocal8Bit(argv[i]));
    }
    carryOut(steps);
    return 0;
}
