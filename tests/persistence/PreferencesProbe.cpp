// An application that remembers repositories and conversations, as many as the third argument says,
// in the preferences in the folder of the first. Their names begin with the second.

#include "persistence/ChatHistoryStore.h"
#include "persistence/RecentReposStore.h"
#include "platform/UserDefaults.h"

#include <QCoreApplication>

using namespace Qt::Literals::StringLiterals;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    vantrel::UserDefaults defaults(arguments.at(1));
    vantrel::ChatHistoryStore history(defaults);
    vantrel::RecentReposStore repos(defaults, u"recentRepos"_s, 100);
    for (int number = 1; number <= arguments.at(3).toInt(); ++number) {
        const QString name = arguments.at(2) + QString::number(number);
        repos.record(name, u'/' + name);
        history.save(name, u"-a"_s, {}, {}, std::nullopt);
    }
}
