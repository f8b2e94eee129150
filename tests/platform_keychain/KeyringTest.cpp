#include "platform_keychain/KeyringTest.h"

#include <QCryptographicHash>
#include <QRegularExpression>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

void clearItems()
{
    const ProcessRun cleared =
        run(u"secret-tool"_s, {u"clear"_s, u"service"_s, u"com.orbisk.apikeys"_s});
    ASSERT_EQ(cleared.errors, "");
}

} // namespace

void KeyringTest::SetUp()
{
    ASSERT_TRUE(keyring.isRunning());
    clearItems();
}

void KeyringTest::TearDown()
{
    if (keyring.isRunning()) {
        keyring.thaw();
        keyring.unlock();
    } else {
        keyring.start();
    }
    clearItems();
}

QStringList KeyringTest::foundItems()
{
    const ProcessRun search = run(u"secret-tool"_s, {u"search"_s, u"--all"_s, u"--unlock"_s,
                                                     u"service"_s, u"com.orbisk.apikeys"_s});
    QStringList lines = QString::fromUtf8(search.output + search.errors).split(u'\n');
    lines.removeIf([](const QString &line) {
        return line.isEmpty() || line.startsWith("created = "_L1) ||
               line.startsWith("modified = "_L1);
    });
    // The daemon counts its items for as long as it runs.
    lines.replaceInStrings(QRegularExpression(u"^\\[/\\d+\\]$"_s), u"[item]"_s);
    lines.sort();
    return lines;
}

ProcessRun KeyringTest::probe(const QStringList &steps, const QByteArray &input)
{
    return run(QStringLiteral(KEYCHAIN_PROBE), steps, input);
}

ProcessRun KeyringTest::probeElsewhere(const QStringList &options, const QStringList &steps,
                                       const QByteArray &input)
{
    return run(QStringLiteral(WITH_KEYRING),
               options + QStringList{QStringLiteral(KEYCHAIN_PROBE)} + steps, input);
}

QByteArray digestLine(const QByteArray &key)
{
    return QCryptographicHash::hash(key, QCryptographicHash::Sha256).toHex() + '\n';
}

} // namespace vantrel::test
