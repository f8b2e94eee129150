#include "SampleProcesses.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int processLimitMs = 60'000; // Only ever reached by a defect.

} // namespace

SampleProvider::SampleProvider(const QStringList &options)
{
    const QStringList arguments = QStringList{u"--delay-ms"_s, u"0"_s, u"--until-stdin-closes"_s,
                                              u"--log"_s, m_folder.filePath(u"log"_s)} +
                                  options;
    m_process.start(QString::fromUtf8(SAMPLE_PROVIDER), arguments);
    QByteArray line;
    while (!line.endsWith('\n') && m_process.waitForReadyRead(processLimitMs)) {
        line += m_process.readLine();
    }
    const QByteArray announcement = "listening on ";
    EXPECT_TRUE(line.startsWith(announcement)) << line.toStdString();
    m_baseURL = QString::fromUtf8(line.sliced(announcement.size())).trimmed();
}

SampleProvider::~SampleProvider()
{
    m_process.closeWriteChannel();
    m_process.waitForFinished(processLimitMs);
}

QList<QJsonObject> SampleProvider::requests() const
{
    QList<QJsonObject> requests;
    QFile log(m_folder.filePath(u"log"_s));
    if (log.open(QIODevice::ReadOnly)) {
        while (!log.atEnd()) {
            requests.append(QJsonDocument::fromJson(log.readLine()).object());
        }
    }
    return requests;
}

void SampleProvider::kill()
{
    m_process.kill();
    m_process.waitForFinished(processLimitMs);
}

QString makeDemoRepository(const QString &folder)
{
    const QString repository = folder + u"/ledger-api"_s;
    QProcess script;
    script.start(QString::fromUtf8(MAKE_DEMO_REPOSITORY), {repository});
    EXPECT_TRUE(script.waitForFinished(processLimitMs));
    EXPECT_EQ(script.exitCode(), 0) << script.readAllStandardError().toStdString();
    return repository;
}

} // namespace vantrel::test
