// Whatever a feed holds, the updates in it are whole and say no more than it does, and a feed of
// them is read as the same.

#include "FuzzCheck.h"

#include "support/UpdateMaker.h"
#include "updates/Appcast.h"
#include "updates/EdDSASignature.h"

namespace {

using namespace Qt::Literals::StringLiterals;
using vantrel::AppcastItem;
using vantrel::fuzz::check;

const QStringList systems{u"linux"_s, u"linux-x86_64"_s};

void checkItem(const AppcastItem &item, qsizetype maxLength)
{
    check(item.packageURL.scheme() == "https"_L1, "a package comes over https");
    check(item.packageURL.path().endsWith(".deb"_L1), "a package is one of Debian");
    check(item.packageLength > 0, "a package has a length");
    check(item.packageSignature.size() == vantrel::ed25519SignatureBytes,
          "a package has a signature");
    check(!item.versionName.isEmpty(), "a version has a name");
    check(item.versionName.size() + item.notes.size() <= maxLength,
          "an update says no more than its feed");
    const QString version = item.version.text();
    check(version.isEmpty() || vantrel::readVersion(version) == item.version,
          "a version written again is the same");
}

vantrel::test::SampleItem written(const AppcastItem &item)
{
    vantrel::test::SampleItem sample;
    sample.version = item.version.segments.isEmpty() ? u"0"_s : item.version.text();
    sample.versionName = item.versionName;
    sample.notes = item.notes;
    sample.packageURL = item.packageURL;
    sample.length = QString::number(item.packageLength);
    sample.signature = item.packageSignature.toBase64();
    return sample;
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    static const vantrel::test::UpdateMaker maker;
    const auto items = parseAppcast(input.toByteArray(), systems);
    if (!items) {
        return;
    }
    QList<vantrel::test::SampleItem> samples;
    for (const AppcastItem &item : *items) {
        checkItem(item, input.size());
        samples.append(written(item));
    }
    check(parseAppcast(maker.feed(samples), systems) == items,
          "a feed of the same updates is read as the same");
}
