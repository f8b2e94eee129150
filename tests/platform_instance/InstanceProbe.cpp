// Starts as an application does:
//   InstanceProbe LIMIT_MS [FOLDER]    the longest wait for the answer of one that runs
// Prints "first", "handed over" or "unanswered". The first one runs on until its standard input
// ends, and prints a line for each request.

#include "platform/instance/linux/BusInstance.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cstdio>
#include <unistd.h>

namespace {

using namespace Qt::Literals::StringLiterals;
using vantrel::ApplicationInstance;
using vantrel::StartRequest;

void print(const QByteArray &line)
{
    std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

int runUntilInputEnds(const ApplicationInstance &instance)
{
    QObject::connect(&instance, &ApplicationInstance::requested, [](const StartRequest &request) {
        print("request " + request.folder.toEncoded());
    });
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [] { QCoreApplication::quit(); });
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    vantrel::BusInstance instance(std::chrono::milliseconds(arguments.value(1).toInt()));
    StartRequest request;
    if (arguments.size() > 2) {
        request.folder = QUrl::fromLocalFile(arguments.at(2));
    }
    request.activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    request.startupId = qEnvironmentVariable("DESKTOP_STARTUP_ID");
    switch (instance.start(request)) {
    case ApplicationInstance::Start::first:
        print("first");
        return runUntilInputEnds(instance);
    case ApplicationInstance::Start::handedOver:
        print("handed over");
        return 0;
    case ApplicationInstance::Start::unanswered:
        print("unanswered");
        return 0;
    }
    Q_UNREACHABLE();
}
