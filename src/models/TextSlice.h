#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QExplicitlySharedDataPointer>
#include <QSharedData>
#include <QString>

#include <utility>

namespace vantrel {

/// An immutable piece of one shared buffer of valid UTF-8: a line of a diff, a header. Copying
/// counts a reference, equality and hashing go by content. It becomes a `QString` only where it is
/// shown and bytes only where it is sent, so that a listing costs its diff text once plus a few
/// bytes a line. Thread: any; copies may live on different threads.
class TextSlice
{
public:
    TextSlice() = default;

    /// The whole of `utf8`, whose bytes are taken over. The caller has checked that they are UTF-8.
    static TextSlice fromUtf8(QByteArray utf8);
    static TextSlice fromString(QStringView text);

    /// The part of `length` bytes from byte `position`, of the same buffer. Both lie on boundaries
    /// of characters and within the slice.
    [[nodiscard]] TextSlice slice(qsizetype position, qsizetype length) const
    {
        Q_ASSERT(position >= 0 && length >= 0 && position <= m_size - length);
        TextSlice part(*this);
        part.m_data += position;
        part.m_size = length;
        return part;
    }

    [[nodiscard]] QByteArrayView utf8() const { return QByteArrayView(m_data, m_size); }
    [[nodiscard]] QString toString() const;
    [[nodiscard]] qsizetype size() const { return m_size; } ///< In bytes.
    [[nodiscard]] bool isEmpty() const { return m_size == 0; }

    friend bool operator==(const TextSlice &a, const TextSlice &b) { return a.utf8() == b.utf8(); }
    friend size_t qHash(const TextSlice &slice, size_t seed = 0)
    {
        return qHashBits(slice.m_data, size_t(slice.m_size), seed);
    }

private:
    friend class TextSliceCutter;

    struct Buffer : QSharedData
    {
        QByteArray bytes{};
    };

    QExplicitlySharedDataPointer<const Buffer> m_buffer{};
    const char *m_data = nullptr;
    qsizetype m_size = 0;
};

/// Cuts many parts out of one slice. Counting references one by one would be the dearest step of
/// reading a line, so they are counted in batches; what a batch leaves over is given back.
class TextSliceCutter
{
public:
    explicit TextSliceCutter(TextSlice whole)
        : m_whole(std::move(whole))
    {}
    Q_DISABLE_COPY_MOVE(TextSliceCutter)
    ~TextSliceCutter();

    /// The same part as `slice` gives.
    [[nodiscard]] TextSlice cut(qsizetype position, qsizetype length)
    {
        Q_ASSERT(position >= 0 && length >= 0 && position <= m_whole.m_size - length);
        if (m_counted == 0) {
            countBatch();
        }
        --m_counted;
        TextSlice part;
        part.m_buffer = Reference(m_whole.m_buffer.data(), QAdoptSharedDataTag());
        part.m_data = m_whole.m_data + position;
        part.m_size = length;
        return part;
    }

private:
    using Reference = QExplicitlySharedDataPointer<const TextSlice::Buffer>;

    void countBatch();

    TextSlice m_whole;
    int m_counted = 0; ///< References that are counted already and that no part holds yet.
};

} // namespace vantrel

Q_DECLARE_TYPEINFO(vantrel::TextSlice, Q_RELOCATABLE_TYPE);
