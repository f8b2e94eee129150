#include "support/UpdateMaker.h"

#include "updates/EdDSASignature.h"

#include <gtest/gtest.h>

#include <QXmlStreamWriter>

#include <openssl/evp.h>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString frameworkNamespace = u"http://www.andymatuschak.org/xml-namespaces/sparkle"_s;

void writeText(QXmlStreamWriter &writer, const QString &name, const QString &text)
{
    if (!text.isEmpty()) {
        writer.writeTextElement(frameworkNamespace, name, text);
    }
}

} // namespace

struct UpdateMaker::Key
{
    EVP_PKEY *key = ::EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519");

    ~Key() { ::EVP_PKEY_free(key); }
};

UpdateMaker::UpdateMaker()
    : m_key(std::make_unique<Key>())
{}

UpdateMaker::~UpdateMaker() = default;

QByteArray UpdateMaker::publicKey() const
{
    QByteArray bytes(ed25519PublicKeyBytes, '\0');
    std::size_t size = std::size_t(bytes.size());
    EXPECT_EQ(::EVP_PKEY_get_raw_public_key(m_key->key,
                                            reinterpret_cast<unsigned char *>(bytes.data()), &size),
              1);
    return bytes;
}

QByteArray UpdateMaker::signature(const QByteArray &bytes) const
{
    QByteArray signature(ed25519SignatureBytes, '\0');
    std::size_t size = std::size_t(signature.size());
    EVP_MD_CTX *const context = ::EVP_MD_CTX_new();
    EXPECT_EQ(::EVP_DigestSignInit(context, nullptr, nullptr, nullptr, m_key->key), 1);
    EXPECT_EQ(::EVP_DigestSign(context, reinterpret_cast<unsigned char *>(signature.data()), &size,
                               reinterpret_cast<const unsigned char *>(bytes.constData()),
                               std::size_t(bytes.size())),
              1);
    ::EVP_MD_CTX_free(context);
    return signature;
}

QByteArray UpdateMaker::feed(const QList<SampleItem> &items) const
{
    QByteArray feed;
    QXmlStreamWriter writer(&feed);
    writer.writeStartDocument();
    writer.writeStartElement(u"rss"_s);
    writer.writeAttribute(u"version"_s, u"2.0"_s);
    writer.writeNamespace(frameworkNamespace, u"sparkle"_s);
    writer.writeStartElement(u"channel"_s);
    writer.writeTextElement(u"title"_s, u"Vantrel"_s);
    for (const SampleItem &item : items) {
        writer.writeStartElement(u"item"_s);
        writer.writeTextElement(u"title"_s, item.version);
        writeText(writer, u"version"_s, item.version);
        writeText(writer, u"shortVersionString"_s, item.versionName);
        writeText(writer, u"channel"_s, item.channel);
        if (!item.notes.isEmpty()) {
            writer.writeStartElement(u"description"_s);
            writer.writeAttribute(frameworkNamespace, u"format"_s, item.notesFormat);
            writer.writeCDATA(item.notes);
            writer.writeEndElement();
        }
        const QByteArray signature =
            item.signature.isEmpty() ? this->signature(item.package).toBase64() : item.signature;
        writer.writeStartElement(u"enclosure"_s);
        writer.writeAttribute(u"url"_s, item.packageURL.toString(QUrl::FullyEncoded));
        writer.writeAttribute(u"length"_s, item.length.isEmpty()
                                               ? QString::number(item.package.size())
                                               : item.length);
        writer.writeAttribute(u"type"_s, u"application/octet-stream"_s);
        if (!item.system.isEmpty()) {
            writer.writeAttribute(frameworkNamespace, u"os"_s, item.system);
        }
        writer.writeAttribute(frameworkNamespace, u"edSignature"_s, QString::fromLatin1(signature));
        writer.writeEndElement();
        writer.writeEndElement();
    }
    writer.writeEndDocument();
    return feed;
}

QByteArray UpdateMaker::signedFeed(const QByteArray &content) const
{
    return content + "<!-- sparkle-signatures:\nedSignature: " + signature(content).toBase64() +
           "\nlength: " + QByteArray::number(content.size()) + "\n-->\n";
}

UpdaterConfiguration UpdateMaker::configuration(const QUrl &feedURL) const
{
    return {feedURL, publicKey()};
}

} // namespace vantrel::test
