// An application that does nothing but use the keychain, to be run beside a test: it carries out
// the steps that its arguments name, one after another, and prints one line for each.
//   read PROVIDER    the SHA-256 of the key, or "none"
//   save PROVIDER    stores the key from the standard input; "status N"
//   delete PROVIDER  "status N"
//   lock, unlock, start-locked, kill-bus
//                    what the name says, to the keyring or the bus; the name
//   read-and-quit PROVIDER
//                    begins to read, prints "reading", and quits when the standard input ends

#include "persistence/KeychainStore.h"
#include "persistence/KeychainWorker.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"
#include "platform/jobs/SystemClock.h"
#include "platform_keychain/Keyring.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>

#include <cstdio>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

void print(const QByteArray &line)
{
    std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

QByteArray standardInput()
{
    QFile input;
    return input.open(stdin, QIODevice::ReadOnly) ? input.readAll() : QByteArray();
}

void printOutcome(const Result<void, KeychainError> &outcome)
{
    print("status " + QByteArray::number(outcome ? 0 : outcome.error().status));
}

Task<> readKey(KeychainWorker *worker, AIProvider provider)
{
    const std::optional<QString> key = co_await worker->apiKey(provider);
    print(key ? QCryptographicHash::hash(key->toUtf8(), QCryptographicHash::Sha256).toHex()
              : QByteArray("none"));
}

Task<> saveKey(KeychainWorker *worker, AIProvider provider)
{
    const QString key = QString::fromUtf8(standardInput());
    const Result<void, KeychainError> saved = co_await worker->saveAPIKey(key, provider);
    printOutcome(saved);
}

Task<> deleteKey(KeychainWorker *worker, AIProvider provider)
{
    const Result<void, KeychainError> deleted = co_await worker->deleteAPIKey(provider);
    printOutcome(deleted);
}

/// True when the step was one that only touches the keyring.
bool handleKeyring(const QString &step)
{
    if (step == "lock"_L1) {
        test::Keyring().lock();
    } else if (step == "unlock"_L1) {
        test::Keyring().unlock();
    } else if (step == "start-locked"_L1) {
        test::Keyring().startLocked();
    } else if (step == "kill-bus"_L1) {
        test::Keyring().killBus();
    } else {
        return false;
    }
    print(step.toUtf8());
    return true;
}

Task<> carryOut(QStringList steps, KeychainWorker *worker)
{
    while (!steps.isEmpty()) {
        const QString step = steps.takeFirst();
        if (handleKeyring(step)) {
            continue;
        }
        const AIProvider provider = aiProviderFromRawValue(steps.takeFirst()).value();
        if (step == "read"_L1) {
            co_await readKey(worker, provider);
        } else if (step == "save"_L1) {
            co_await saveKey(worker, provider);
        } else if (step == "delete"_L1) {
            co_await deleteKey(worker, provider);
        } else {
            qFatal("unknown step: %s", qPrintable(step));
        }
    }
}

int main(QCoreApplication &application)
{
    SystemClock clock;
    KeychainWorker worker(
        std::make_shared<KeychainStore>(u"com.orbisk.apikeys"_s, systemSecretItems()), clock);
    const QStringList steps = application.arguments().mid(1);
    if (steps.first() == "read-and-quit"_L1) {
        const Job job(readKey(&worker, aiProviderFromRawValue(steps.last()).value()));
        RunQueue::interfaceThread().runUntilIdle();
        print("reading");
        standardInput();
        return 0;
    }
    const Job job(carryOut(steps, &worker), [] { QCoreApplication::quit(); });
    return QCoreApplication::exec();
}

} // namespace
} // namespace vantrel

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    vantrel::RunQueue::interfaceThread();
    return vantrel::main(application);
}
