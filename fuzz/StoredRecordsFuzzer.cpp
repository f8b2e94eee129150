// What can be read from stored conversations and recent repositories is the same after it has been
// written and read again.

#include "FuzzCheck.h"

#include "models/PersistedChatThreadCoding.h"
#include "models/RecentRepoCoding.h"
#include "persistence/StoredRecords.h"

namespace {

template<typename Read>
void checkRoundTrip(const QByteArray &json, Read read)
{
    const auto records = vantrel::recordsFromStoredForm(json, read);
    const QByteArray form = vantrel::storedForm(records);
    vantrel::fuzz::check(vantrel::recordsFromStoredForm(form, read) == records,
                         "writing and reading again gives the same records");
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const QByteArray json = input.toByteArray();
    checkRoundTrip(json, vantrel::persistedChatThreadFromJson);
    checkRoundTrip(json, vantrel::recentRepoFromJson);
}
