// A stand-in for a model provider, for trying the application and for its end-to-end tests.

#include "SampleServer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSocketNotifier>

#include <cstdio>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;
using vantrel::sample::SampleServer;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Answers chat-completions requests on the loopback interface by fixed rules."_s);
    parser.addHelpOption();
    const QCommandLineOption port(u"port"_s, u"Listen on this port."_s, u"N"_s, u"0"_s);
    const QCommandLineOption delay(u"delay-ms"_s, u"Wait between streamed chunks."_s, u"N"_s,
                                   u"15"_s);
    const QCommandLineOption status(u"status"_s, u"Answer everything with this status."_s, u"N"_s,
                                    u"0"_s);
    const QCommandLineOption log(u"log"_s, u"Append each request to this file, as JSON."_s,
                                 u"FILE"_s);
    const QCommandLineOption faults(
        u"faults"_s, u"Misbehave at some requests, chosen by this number: slow, silent, broken…"_s,
        u"SEED"_s);
    const QCommandLineOption untilClosed(u"until-stdin-closes"_s,
                                         u"End when standard input is closed."_s);
    parser.addOptions({port, delay, status, log, faults, untilClosed});
    parser.process(application);

    SampleServer::Options options;
    options.port = quint16(parser.value(port).toUInt());
    options.delayMs = parser.value(delay).toInt();
    options.status = parser.value(status).toInt();
    options.logFile = parser.value(log);
    if (parser.isSet(faults)) {
        options.faults.emplace(parser.value(faults).toUInt());
    }
    SampleServer server(options);
    if (!server.listen()) {
        std::fprintf(stderr, "sample_provider: %s\n", qPrintable(server.errorString()));
        return 1;
    }
    std::printf("listening on http://localhost:%d/v1\n", server.port());
    std::fflush(stdout);

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    input.setEnabled(parser.isSet(untilClosed));
    QObject::connect(&input, &QSocketNotifier::activated, &application, [&input] {
        char ignored = 0;
        if (::read(STDIN_FILENO, &ignored, 1) <= 0) {
            input.setEnabled(false);
            QCoreApplication::quit();
        }
    });
    return QCoreApplication::exec();
}
