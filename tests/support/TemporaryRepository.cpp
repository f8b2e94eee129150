#include "support/TemporaryRepository.h"

#include "git/ProcessRunner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>
#include <unistd.h>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString rootName = QStringLiteral("the r\u00e9pository %41");

[[noreturn]] void fail(const QString &step, const QString &reason)
{
    throw std::runtime_error((step + u": "_s + reason).toStdString());
}

/// The words that run git with nothing of this process's environment but the search path.
QStringList gitCommand(const QStringList &arguments, const QString &home)
{
    QStringList words{u"-i"_s, u"PATH="_s + qEnvironmentVariable("PATH"), u"HOME="_s + home,
                      u"LC_ALL=C.UTF-8"_s, u"GIT_CONFIG_NOSYSTEM=1"_s};
    for (const QString &person : {u"AUTHOR"_s, u"COMMITTER"_s}) {
        words += {u"GIT_%1_NAME=Somebody"_s.arg(person),
                  u"GIT_%1_EMAIL=somebody@example.com"_s.arg(person),
                  u"GIT_%1_DATE=2001-01-01T00:00:00Z"_s.arg(person)};
    }
    return words + QStringList{u"git"_s} + arguments;
}

// Not by QProcess: after one of its forks the thread sanitizer sees no lock of this thread any
// more.
Result<TextSlice, ProcessFailure> runGit(const QStringList &arguments, const QString &folder,
                                         const QString &home)
{
    return ProcessRunner().run(u"env"_s, gitCommand(arguments, home), QUrl::fromLocalFile(folder));
}

} // namespace

TemporaryRepository::TemporaryRepository()
{
    if (!QDir(m_folder.path()).mkdir(rootName)) {
        fail(u"mkdir"_s, m_folder.errorString());
    }
    git({u"init"_s, u"--quiet"_s, u"--initial-branch=main"_s});
}

QUrl TemporaryRepository::root() const
{
    return QUrl::fromLocalFile(path());
}

QString TemporaryRepository::path(const QString &file) const
{
    const QString root = pathOutside(rootName);
    return file.isEmpty() ? root : root + u'/' + file;
}

QString TemporaryRepository::pathOutside(const QString &name) const
{
    return m_folder.filePath(name);
}

void TemporaryRepository::write(const QString &file, const QByteArray &content) const
{
    QDir().mkpath(QFileInfo(path(file)).path());
    QFile target(path(file));
    // Cut afterwards: some file systems write a file to the disk that was emptied first.
    if (!target.open(QFile::ReadWrite) || target.write(content) != content.size() ||
        !target.resize(content.size())) {
        fail(u"write "_s + file, target.errorString());
    }
}

void TemporaryRepository::remove(const QString &file) const
{
    QFile target(path(file));
    if (!target.remove()) {
        fail(u"remove "_s + file, target.errorString());
    }
}

void TemporaryRepository::link(const QString &file, const QByteArray &target) const
{
    const QByteArray place = QFile::encodeName(path(file));
    ::unlink(place.constData());
    if (::symlink(target.constData(), place.constData()) != 0) {
        fail(u"link "_s + file, qt_error_string());
    }
}

QByteArray TemporaryRepository::git(const QStringList &arguments) const
{
    const auto output = runGit(arguments, path(), m_folder.path());
    if (!output) {
        fail(u"git "_s + arguments.join(u' '), output.error().description());
    }
    return output->utf8().toByteArray();
}

int TemporaryRepository::gitStatus(const QStringList &arguments) const
{
    const auto output = runGit(arguments, path(), m_folder.path());
    if (output) {
        return 0;
    }
    if (output.error().serviceError() == nullptr) {
        fail(u"git "_s + arguments.join(u' '), output.error().description());
    }
    return output.error().serviceError()->status;
}

void TemporaryRepository::commitAll() const
{
    git({u"add"_s, u"--all"_s});
    git({u"commit"_s, u"--quiet"_s, u"--message=A step"_s});
}

} // namespace vantrel::test
