#include "updates/Appcast.h"

#include "updates/EdDSASignature.h"
#include "updates/StrictBase64.h"

#include <QLatin1StringView>
#include <QXmlStreamReader>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QLatin1StringView frameworkNamespace{
    "http://www.andymatuschak.org/xml-namespaces/sparkle"};

/// An item as it is written.
struct WrittenItem
{
    QString version{};
    QString versionName{};
    QString notes{};
    QString channel{};
    QString system{};
    QString url{};
    QString length{};
    QString signature{};
};

QString frameworkAttribute(const QXmlStreamReader &reader, QLatin1StringView name)
{
    return reader.attributes().value(frameworkNamespace, name).toString();
}

void readEnclosure(const QXmlStreamReader &reader, WrittenItem &item)
{
    item.url = reader.attributes().value("url"_L1).toString();
    item.length = reader.attributes().value("length"_L1).toString();
    item.signature = frameworkAttribute(reader, "edSignature"_L1);
    item.system = frameworkAttribute(reader, "os"_L1);
    // Older feeds have the version here. An element of the item says it first.
    if (item.version.isEmpty()) {
        item.version = frameworkAttribute(reader, "version"_L1);
    }
    if (item.versionName.isEmpty()) {
        item.versionName = frameworkAttribute(reader, "shortVersionString"_L1);
    }
}

void readFrameworkElement(QXmlStreamReader &reader, WrittenItem &item)
{
    if (reader.name() == "version"_L1) {
        item.version = reader.readElementText().trimmed();
    } else if (reader.name() == "shortVersionString"_L1) {
        item.versionName = reader.readElementText().trimmed();
    } else if (reader.name() == "channel"_L1) {
        item.channel = reader.readElementText().trimmed();
    } else {
        reader.skipCurrentElement();
    }
}

void readDescription(QXmlStreamReader &reader, WrittenItem &item)
{
    const QString format = frameworkAttribute(reader, "format"_L1);
    if (format == "plain-text"_L1 || format == "markdown"_L1) {
        item.notes = reader.readElementText().trimmed();
    } else {
        reader.skipCurrentElement();
    }
}

WrittenItem readItem(QXmlStreamReader &reader)
{
    WrittenItem item;
    while (reader.readNextStartElement()) {
        if (reader.namespaceUri() == frameworkNamespace) {
            readFrameworkElement(reader, item);
        } else if (reader.name() == "enclosure"_L1) {
            readEnclosure(reader, item);
            reader.skipCurrentElement();
        } else if (reader.name() == "description"_L1) {
            readDescription(reader, item);
        } else {
            reader.skipCurrentElement();
        }
    }
    return item;
}

bool hasDebianPackage(const WrittenItem &item)
{
    return QUrl(item.url).path().endsWith(".deb"_L1);
}

std::optional<AppcastItem> checkedItem(const WrittenItem &written)
{
    const auto version = readVersion(written.version);
    const QUrl url(written.url, QUrl::StrictMode);
    bool isNumber = false;
    const qlonglong length = written.length.toLongLong(&isNumber);
    const auto signature = decodeStrictBase64(written.signature.toUtf8());
    if (!version || !url.isValid() || url.scheme() != "https"_L1 || !isNumber || length < 1 ||
        !signature || signature->size() != ed25519SignatureBytes) {
        return std::nullopt;
    }
    AppcastItem item;
    item.version = *version;
    item.versionName = written.versionName.isEmpty() ? written.version : written.versionName;
    item.notes = written.notes;
    item.packageURL = url;
    item.packageLength = length;
    item.packageSignature = *signature;
    return item;
}

/// The items of all systems; nothing when the feed is not well-formed.
std::optional<QList<WrittenItem>> readItems(const QByteArray &feed)
{
    QList<WrittenItem> items;
    QXmlStreamReader reader(feed);
    while (!reader.atEnd() && !reader.isStartElement()) {
        // Entities of its own could make a small feed a large one.
        if (reader.readNext() == QXmlStreamReader::DTD) {
            return std::nullopt;
        }
    }
    if (reader.name() != "rss"_L1) {
        return std::nullopt;
    }
    while (reader.readNextStartElement()) {
        if (reader.name() != "channel"_L1) {
            reader.skipCurrentElement();
            continue;
        }
        while (reader.readNextStartElement()) {
            if (reader.name() == "item"_L1) {
                items.append(readItem(reader));
            } else {
                reader.skipCurrentElement();
            }
        }
    }
    while (!reader.atEnd()) {
        reader.readNext();
    }
    return reader.hasError() ? std::nullopt : std::optional(items);
}

} // namespace

std::optional<QList<AppcastItem>> parseAppcast(const QByteArray &feed, const QStringList &systems)
{
    const auto written = readItems(feed);
    if (!written) {
        return std::nullopt;
    }
    QList<AppcastItem> items;
    for (const WrittenItem &item : *written) {
        if (!systems.contains(item.system) || !item.channel.isEmpty() || !hasDebianPackage(item)) {
            continue;
        }
        const auto checked = checkedItem(item);
        if (!checked) {
            return std::nullopt;
        }
        items.append(*checked);
    }
    return items;
}

} // namespace vantrel
