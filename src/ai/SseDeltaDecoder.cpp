#include "ai/SseDeltaDecoder.h"

#include "ai/CompletionCoding.h"

#include <cstring>

namespace vantrel {

namespace {

constexpr QByteArrayView dataField = "data:";
constexpr QByteArrayView endMark = "[DONE]";

QByteArrayView trimmedBlanks(QByteArrayView text)
{
    const auto isBlank = [](char character) { return character == ' ' || character == '\t'; };
    while (!text.isEmpty() && isBlank(text.front())) {
        text = text.sliced(1);
    }
    while (!text.isEmpty() && isBlank(text.back())) {
        text.chop(1);
    }
    return text;
}

} // namespace

QStringList SseDeltaDecoder::feed(QByteArrayView bytes)
{
    QStringList deltas;
    while (!bytes.isEmpty() && !m_isDone) {
        const void *const found = std::memchr(bytes.data(), '\n', size_t(bytes.size()));
        if (found == nullptr) {
            keep(bytes);
            break;
        }
        const qsizetype length = static_cast<const char *>(found) - bytes.data();
        if (m_line.isEmpty() && !m_isTooLong) {
            takeLine(bytes.first(length), deltas);
        } else {
            keep(bytes.first(length));
            if (!m_isTooLong) {
                takeLine(m_line, deltas);
            }
            m_line.clear();
            m_isTooLong = false;
        }
        bytes = bytes.sliced(length + 1);
    }
    return deltas;
}

QStringList SseDeltaDecoder::finish()
{
    QStringList deltas;
    if (!m_isDone && !m_isTooLong) {
        takeLine(m_line, deltas);
    }
    m_line.clear();
    return deltas;
}

void SseDeltaDecoder::takeLine(QByteArrayView line, QStringList &deltas)
{
    if (line.size() > maxLineBytes) {
        return;
    }
    if (line.endsWith('\r')) {
        line.chop(1);
    }
    if (!line.startsWith(dataField)) {
        return;
    }
    const QByteArrayView data = trimmedBlanks(line.sliced(dataField.size()));
    if (data == endMark) {
        m_isDone = true;
        return;
    }
    const auto content = decodeChunkContent(data);
    if (content && !content->isEmpty()) {
        deltas.append(*content);
    }
}

void SseDeltaDecoder::keep(QByteArrayView part)
{
    if (m_isTooLong || m_line.size() + part.size() > maxLineBytes) {
        m_isTooLong = true;
        m_line.clear();
        return;
    }
    m_line.append(part);
}

} // namespace vantrel
