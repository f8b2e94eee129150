#include "RepositoryTest.h"

#include "git/GitEnvironment.h"

#include <QFile>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

RepositoryTest::RepositoryTest()
{
    qputenv("HOME", QFile::encodeName(m_repository.pathOutside(u"home"_s)));
    qunsetenv("XDG_CONFIG_HOME");
    qputenv("GIT_CONFIG_NOSYSTEM", "1");
    qputenv("LC_ALL", "C");
    pinGitEnvironment();
}

RepositoryTest::Listing RepositoryTest::changedFiles()
{
    return m_service.changedFiles(m_repository.root(), ListingControl());
}

QString RepositoryTest::failureOf(const Listing &listing)
{
    if (listing || listing.error().serviceError() == nullptr) {
        return u"no failure of git"_s;
    }
    const ProcessRunnerError &error = *listing.error().serviceError();
    return QString::number(error.status) + u' ' + error.message.section(u'\n', 0, 0);
}

QByteArray numberedLines(int count, const QList<int> &changed)
{
    QByteArray content;
    for (int i = 1; i <= count; ++i) {
        content += QByteArray::number(i) + (changed.contains(i) ? "!\n" : "\n");
    }
    return content;
}

} // namespace vantrel::test
