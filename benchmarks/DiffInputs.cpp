#include "DiffInputs.h"

#include <array>
#include <cstdint>
#include <random>

namespace vantrel::bench {

namespace {

/// Writes hunks whose headers count right, as a strict reader of diffs demands.
class DiffWriter
{
public:
    [[nodiscard]] qsizetype size() const { return m_text.size() + m_body.size(); }

    /// A change as git shows it: three lines of context around a few changed ones.
    void appendSmallChange()
    {
        appendLines(' ', 3);
        appendLines('-', draw(5));
        appendLines('+', 1 + draw(5));
        appendLines(' ', 3);
    }

    void closeHunk()
    {
        m_text += "@@ -" + QByteArray::number(m_oldStart) + ',' + QByteArray::number(m_oldCount) +
                  " +" + QByteArray::number(m_newStart) + ',' + QByteArray::number(m_newCount) +
                  " @@ int Widget::measure(const Layout &layout)\n" + m_body;
        m_oldStart += m_oldCount + 40;
        m_newStart += m_newCount + 40;
        m_oldCount = 0;
        m_newCount = 0;
        m_body.clear();
    }

    [[nodiscard]] QByteArray text() const { return m_text; }

private:
    int draw(int bound) { return int(m_random() % unsigned(bound)); }

    void appendLines(char prefix, int count)
    {
        static constexpr std::array<const char *, 8> words{
            "return ", "const auto ", "value", " = ", "m_layout.width()", "if (", ") {", "\xc3\xa4",
        };
        for (int i = 0; i < count; ++i) {
            m_body += prefix;
            m_body.append(4 * draw(4), ' ');
            for (int word = draw(9); word > 0; --word) {
                m_body += words[m_random() % words.size()];
            }
            m_body += '\n';
        }
        m_oldCount += prefix == '+' ? 0 : count;
        m_newCount += prefix == '-' ? 0 : count;
    }

    std::minstd_rand m_random{20240607};
    QByteArray m_text = "diff --git a/src/Widget.cpp b/src/Widget.cpp\n"
                        "index 3b18e51a..a0423896 100644\n"
                        "--- a/src/Widget.cpp\n"
                        "+++ b/src/Widget.cpp\n";
    QByteArray m_body{};
    std::int64_t m_oldStart = 1;
    std::int64_t m_newStart = 1;
    std::int64_t m_oldCount = 0;
    std::int64_t m_newCount = 0;
};

} // namespace

QByteArray diffInput(DiffShape shape, int megabytes)
{
    DiffWriter writer;
    while (writer.size() < qsizetype(megabytes) * 1'000'000) {
        writer.appendSmallChange();
        if (shape == DiffShape::manyHunks) {
            writer.closeHunk();
        }
    }
    if (shape == DiffShape::oneHunk) {
        writer.closeHunk();
    }
    return writer.text();
}

} // namespace vantrel::bench
