// Recent repositories are the same after they have been written and read again: those of any text,
// and those that can be read from any bytes.

#include "StoredRoundTrip.h"

#include "models/RecentRepoCoding.h"

namespace {

/// Repositories that have the input's texts for names and paths.
QList<vantrel::RecentRepo> reposOf(QByteArrayView input)
{
    const QUuid id = QUuid::createUuidV5(QUuid(), input.toByteArray());
    const QDateTime moment = vantrel::fuzz::momentOf(input);
    const QStringList texts = vantrel::fuzz::textsOf(input, 2);
    QList<vantrel::RecentRepo> repos;
    for (qsizetype i = 0; i + 1 < texts.size(); ++i) {
        repos.append({id, texts.at(i), texts.at(i + 1), moment});
    }
    return repos;
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    checkRead(input, recentRepoFromJson);
    checkWritten(reposOf(input), recentRepoFromJson);
}
