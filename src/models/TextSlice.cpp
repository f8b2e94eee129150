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

TextSlice TextSlice::slice(qsizetype position, qsizetype length) const
{
    Q_ASSERT(position >= 0 && length >= 0 && position + length <= m_size);
    TextSlice part;
    part.m_buffer = m_buffer;
    part.m_data = m_data + position;
    part.m_size = length;
    return part;
}

} // namespace vantrel
