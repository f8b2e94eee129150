#include "support/TemporaryRepository.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

TemporaryRepository::TemporaryRepository()
{
    git({u"init"_s, u"--quiet"_s, u"--initial-branch=main"_s});
    git({u"config"_s, u"user.name"_s, u"Test"_s});
    git({u"config"_s, u"user.email"_s, u"test@example.com"_s});
}

QUrl TemporaryRepository::root() const
{
    return QUrl::fromLocalFile(m_folder.path());
}

QString TemporaryRepository::path(const QString &name) const
{
    return name.isEmpty() ? m_folder.path() : m_folder.path() + u'/' + name;
}

QByteArray TemporaryRepository::git(const QStringList &arguments) const
{
    QProcess process;
    process.setWorkingDirectory(m_folder.path());
    process.start(u"git"_s, arguments);
    EXPECT_TRUE(process.waitForFinished(-1));
    EXPECT_EQ(process.exitCode(), 0)
        << qPrintable(arguments.join(u' ')) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

void TemporaryRepository::write(const QString &name, const QByteArray &content) const
{
    EXPECT_TRUE(QDir().mkpath(QFileInfo(path(name)).path()));
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(name);
    EXPECT_EQ(file.write(content), content.size());
}

void TemporaryRepository::commitAll() const
{
    git({u"add"_s, u"--all"_s});
    git({u"commit"_s, u"--quiet"_s, u"--allow-empty"_s, u"--message"_s, u"x"_s});
}

} // namespace vantrel::test
