#include "SampleProcesses.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>

#include <array>
#include <fcntl.h>
#include <unistd.h>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Reads up to the end of the line, or to the end.
QByteArray readLine(int handle)
{
    QByteArray line;
    char character = 0;
    while (!line.endsWith('\n') && ::read(handle, &character, 1) == 1) {
        line.append(character);
    }
    return line;
}

} // namespace

SampleProvider::SampleProvider(const QStringList &options)
{
    const QStringList arguments = QStringList{u"--delay-ms"_s, u"0"_s, u"--until-stdin-closes"_s,
                                              u"--log"_s, m_folder.filePath(u"log"_s)} +
                                  options;
    std::array<int, 2> output{};
    EXPECT_EQ(::pipe2(output.data(), O_CLOEXEC), 0);
    m_process.emplace(QString::fromUtf8(SAMPLE_PROVIDER), arguments,
                      QProcessEnvironment::systemEnvironment(), output[1]);
    ::close(output[1]);
    const QByteArray line = readLine(output[0]);
    ::close(output[0]);
    const QByteArray announcement = "listening on ";
    EXPECT_TRUE(line.startsWith(announcement)) << line.toStdString();
    m_baseURL = QString::fromUtf8(line.mid(announcement.size())).trimmed();
}

SampleProvider::~SampleProvider()
{
    if (m_process) {
        m_process->closeInput();
        EXPECT_EQ(m_process->waitForEnd().exitCode, 0);
    }
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
    m_process.reset();
}

QString makeDemoRepository(const QString &folder)
{
    const QString repository = folder + u"/ledger-api"_s;
    const ProcessRun script = run(QString::fromUtf8(MAKE_DEMO_REPOSITORY), {repository});
    EXPECT_EQ(script.exitCode, 0) << script.errors.toStdString();
    return repository;
}

} // namespace vantrel::test
