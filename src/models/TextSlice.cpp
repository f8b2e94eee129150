#include "models/TextSlice.h"

#include <utility>

namespace vantrel {

TextSlice TextSlice::fromUtf8(QByteArray utf8)
{
    auto *const buffer = new Buffer;
    buffer->bytes = std::move(utf8);
    TextSlice all;
    all.m_buffer = QExplicitlySharedDataPointer<const Buffer>(buffer);
    all.m_data = buffer->bytes.constData();
    all.m_size = buffer->bytes.size();
    return all;
}

TextSlice TextSlice::fromString(QStringView text)
{
    return fromUtf8(text.toUtf8());
}

QString TextSlice::toString() const
{
    // Qt takes a byte order mark at the start for a sign of the encoding and drops it; here it is
    // the first character of somebody's file.
    constexpr char byteOrderMark[] = "\xef\xbb\xbf";
    if (utf8().startsWith(byteOrderMark)) {
        return QChar(QChar::ByteOrderMark) + QString::fromUtf8(utf8().sliced(3));
    }
    return QString::fromUtf8(m_data, m_size);
}

TextSliceCutter::~TextSliceCutter()
{
    if (m_whole.m_buffer) {
        m_whole.m_buffer->ref.fetchAndSubRelaxed(m_counted); // `m_whole` keeps one.
    }
}

void TextSliceCutter::countBatch()
{
    constexpr int batch = 256;
    m_counted = batch;
    if (m_whole.m_buffer) {
        m_whole.m_buffer->ref.fetchAndAddRelaxed(batch);
    }
}

} // namespace vantrel
