#include "TrapTest.h"

#include "git/ProcessRunner.h"

#include <QDir>
#include <QFile>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

QString TrapTest::trap(const QString &name, const QByteArray &lines) const
{
    const QString marksFolder = m_repository.pathOutside(u"marks"_s);
    QDir().mkpath(marksFolder);
    const QByteArray mark = QFile::encodeName(marksFolder + u'/' + name);
    m_repository.write(u"../trap-"_s + name, "#!/bin/sh\n: > '" + mark + "'\n" + lines);
    const QString program = m_repository.pathOutside(u"trap-"_s + name);
    QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return program;
}

QStringList TrapTest::marks() const
{
    return QDir(m_repository.pathOutside(u"marks"_s)).entryList(QDir::Files, QDir::Name);
}

void TrapTest::configure(const QString &key, const QString &value) const
{
    m_repository.git({u"config"_s, key, value});
}

void TrapTest::configurePerson(const QByteArray &lines) const
{
    QFile file(m_repository.pathOutside(u"home/.gitconfig"_s));
    QDir().mkpath(m_repository.pathOutside(u"home"_s));
    ASSERT_TRUE(file.open(QFile::Append));
    file.write(lines);
}

void TrapTest::setAttributes(const QByteArray &attributes) const
{
    m_repository.write(u".git/info/attributes"_s, "* " + attributes + '\n');
}

void TrapTest::changeFile() const
{
    m_repository.write(u"f"_s, numberedLines(9));
    m_repository.write(u"g"_s, "same\n");
    m_repository.commitAll();
    m_repository.write(u"f"_s, numberedLines(9, {5}));
    QFile touched(m_repository.path(u"g"_s));
    ASSERT_TRUE(touched.open(QFile::ReadWrite));
    ASSERT_TRUE(touched.setFileTime(QDateTime::fromSecsSinceEpoch(1'000'000'000),
                                    QFileDevice::FileModificationTime));
}

TrapTest::Listing TrapTest::changedFilesUnguarded()
{
    const ProcessRunner runner;
    return GitService(runner, m_reader).changedFiles(m_repository.root(), ListingControl());
}

} // namespace vantrel::test
