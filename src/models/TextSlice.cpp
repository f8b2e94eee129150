#include "models/TextSlice.h"

#include "models/Utf8.h"

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
    return textFromUtf8(utf8());
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
