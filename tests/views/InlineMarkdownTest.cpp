#include "views/InlineMarkdown.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>
#include <QStringList>
#include <QTextBlock>
#include <QTextDocument>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The text with its looks in brackets: (emphasised), {strong}, <code>, in this order.
QString spelled(const Prose &prose)
{
    QString result;
    qsizetype copied = 0;
    for (const ProseSpan &span : prose.spans) {
        result += QStringView(prose.text).sliced(copied, span.start - copied);
        QString part = prose.text.mid(span.start, span.length);
        if (span.isCode) {
            part = u"⟨"_s + part + u"⟩"_s;
        }
        if (span.isStrong) {
            part = u"{"_s + part + u"}"_s;
        }
        if (span.isEmphasised) {
            part = u"("_s + part + u")"_s;
        }
        result += part;
        copied = span.start + span.length;
    }
    return result + prose.text.sliced(copied);
}

struct Example
{
    const char *name;
    QString source{};
    QString shown{};
};

void PrintTo(const Example &example, std::ostream *stream)
{
    *stream << example.source.toStdString();
}

class InlineMarkdown : public testing::TestWithParam<Example>
{};

TEST_P(InlineMarkdown, IsShownSo)
{
    EXPECT_EQ(spelled(inlineMarkdown(GetParam().source)).toStdString(),
              GetParam().shown.toStdString());
}

const QList<Example> examples = {
    {"Nothing", u""_s, u""_s},
    {"Plain", u"Two words."_s, u"Two words."_s},
    {"EmphasisByStars", u"a *b* c"_s, u"a (b) c"_s},
    {"EmphasisByUnderscores", u"a _b_ c"_s, u"a (b) c"_s},
    {"Strong", u"a **b** __c__"_s, u"a {b} {c}"_s},
    {"StrongWithinEmphasis", u"*a **b** c*"_s, u"(a )({b})( c)"_s},
    {"Both", u"***a***"_s, u"({a})"_s},
    {"EmphasisWithinStrong", u"a **b *c***"_s, u"a {b }({c})"_s},
    {"MoreMarksThanPartners", u"***a**"_s, u"*{a}"_s},
    {"StarsInAWord", u"un*believ*able"_s, u"un(believ)able"_s},
    {"UnderscoresInAName", u"a snake_case_name here"_s, u"a snake_case_name here"_s},
    {"UnderscoresAroundANameWithOnes", u"_snake_case_"_s, u"(snake_case)"_s},
    {"StarsBesideBlanks", u"2 * 3 * 4 and a * b"_s, u"2 * 3 * 4 and a * b"_s},
    {"StarsBesidePunctuation", u"a*\"b\"*"_s, u"a*\"b\"*"_s},
    {"NoBreakSpaceIsABlank", u"*\u00A0a*"_s, u"*\u00A0a*"_s},
    {"WideCharacters", u"**漢字**と😀*x*"_s, u"{漢字}と😀(x)"_s},
    {"AcrossALine", u"*a\nb*"_s, u"(a\nb)"_s},
    {"NotAcrossAParagraph", u"*a\n\nb*"_s, u"*a\n\nb*"_s},
    {"NotAcrossListItems", u"- *a\n- b*\n"_s, u"- *a\n- b*\n"_s},
    {"NotAcrossAHeading", u"# *a\nb*"_s, u"# *a\nb*"_s},
    {"WithoutPartner", u"a **bo"_s, u"a **bo"_s},
    {"OnlyMarks", u"*** ** _ `"_s, u"*** ** _ `"_s},

    {"Code", u"call `refresh()` now"_s, u"call ⟨refresh()⟩ now"_s},
    {"CodeHoldsMarks", u"`a *b* <c>`"_s, u"⟨a *b* <c>⟩"_s},
    {"CodeHoldsABackslash", u"`a\\`b"_s, u"⟨a\\⟩b"_s},
    {"CodeHoldsABacktick", u"`` a`b ``"_s, u"⟨a`b⟩"_s},
    {"CodeOfABlank", u"` `"_s, u"⟨ ⟩"_s},
    {"CodeAcrossALine", u"`a\nb`"_s, u"⟨a b⟩"_s},
    {"CodeWithoutPartner", u"a `bo"_s, u"a `bo"_s},
    {"CodeBindsTighterThanEmphasis", u"*a `b*`"_s, u"*a ⟨b*⟩"_s},
    {"CodeWithinEmphasis", u"**see `b`**"_s, u"{see }{⟨b⟩}"_s},
    {"BackticksOfOtherLength", u"``a`"_s, u"``a`"_s},

    {"Backslash", u"\\*a\\* \\_ \\` \\\\"_s, u"*a* _ ` \\"_s},
    {"BackslashBeforeALetter", u"C:\\new\\n"_s, u"C:\\new\\n"_s},
    {"BackslashAtTheEnd", u"a\\"_s, u"a\\"_s},

    {"Link", u"see [the *docs*](http://x/_a_b_) now"_s, u"see the (docs) (http://x/_a_b_) now"_s},
    {"LinkWithTitle", u"[a](b \"c\")"_s, u"a (b \"c\")"_s},
    {"LinkInAngles", u"[a](<b c>)"_s, u"a (<b c>)"_s},
    {"LinkWithParentheses", u"[a](b(c)d)"_s, u"a (b(c)d)"_s},
    {"LinkToNowhere", u"[a]()"_s, u"a"_s},
    {"LinkWithinLink", u"[a [b](c)](d)"_s, u"[a b (c)](d)"_s},
    {"LinkOnItsWay", u"[a](http://x"_s, u"[a](http://x"_s},
    {"LinkEndsEmphasisWithin", u"*a [b*](c)"_s, u"*a b* (c)"_s},
    {"ReferenceLink", u"[a][b] and [c]"_s, u"[a][b] and [c]"_s},
    {"ReferenceDefinition", u"[a]: http://x"_s, u"[a]: http://x"_s},
    {"Image", u"![a](http://x/y.png)"_s, u"a (http://x/y.png)"_s},
    {"ImageWithinLink", u"[![a](b)](c)"_s, u"a (b) (c)"_s},
    {"Subscripts", u"rows[i] and rows[j] (both)"_s, u"rows[i] and rows[j] (both)"_s},
    {"Autolink", u"<http://x/_a_>*b*"_s, u"<http://x/_a_>(b)"_s},

    {"Html", u"<img src='http://x/_a_.png'> <b>*c*</b>"_s,
     u"<img src='http://x/_a_.png'> <b>(c)</b>"_s},
    {"LessThan", u"a < *b* > c"_s, u"a < (b) > c"_s},
    {"Entities", u"&lt;b&gt; &amp; &#42;a&#42;"_s, u"&lt;b&gt; &amp; &#42;a&#42;"_s},

    {"Heading", u"# A *b*\nc"_s, u"# A (b)\nc"_s},
    {"List", u"* a *b*\n* c\n  1. d"_s, u"* a (b)\n* c\n  1. d"_s},
    {"Quote", u"> a\n> *b*"_s, u"> a\n> (b)"_s},
    {"Table", u"| a | *b* |\n|---|---|\n| c | d |"_s, u"| a | (b) |\n|---|---|\n| c | d |"_s},
    {"Rule", u"a\n***\nb\n___"_s, u"a\n***\nb\n___"_s},
    {"Fence", u"a\n```cpp\nint *x;\n\n  *y*\n```\n*b*"_s, u"a\n⟨int *x;⟩\n\n⟨  *y*⟩\n(b)"_s},
    {"FenceOfTildes", u"~~~\n```\n~~~~"_s, u"⟨```⟩"_s},
    {"FenceOnItsWay", u"a\n```\n*b"_s, u"a\n⟨*b⟩"_s},
    {"FenceWithoutLines", u"a\n```"_s, u"a"_s},
    {"IndentedFence", u"- a\n  ```\n  b\n    c\n  ```"_s, u"- a\n⟨b⟩\n⟨  c⟩"_s},
    {"ThreeBackticksInALine", u"```a```"_s, u"⟨a⟩"_s},
};

INSTANTIATE_TEST_SUITE_P(Examples, InlineMarkdown, testing::ValuesIn(examples),
                         [](const auto &example) { return std::string(example.param.name); });

/// Random words of an alphabet in which marks meet often.
class RandomSource
{
public:
    explicit RandomSource(const QStringList &alphabet)
        : m_alphabet(alphabet)
    {}

    QString next()
    {
        QString source;
        const int length = m_random.bounded(1, 24);
        for (int i = 0; i < length; ++i) {
            source += m_alphabet.at(m_random.bounded(int(m_alphabet.size())));
        }
        return source;
    }

private:
    QStringList m_alphabet;
    QRandomGenerator m_random{4711};
};

/// What Qt's own reader of CommonMark makes of a paragraph.
Prose readByQt(const QString &source)
{
    QTextDocument document;
    document.setMarkdown(source, QTextDocument::MarkdownDialectCommonMark);
    Prose prose;
    const QTextBlock block = document.firstBlock();
    for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment) {
        const QTextCharFormat format = fragment.fragment().charFormat();
        ProseSpan span;
        span.start = prose.text.size();
        span.length = fragment.fragment().length();
        span.isEmphasised = format.fontItalic();
        span.isStrong = format.fontWeight() >= QFont::Bold;
        span.isCode = format.fontFixedPitch();
        prose.text += fragment.fragment().text();
        if (span.isEmphasised || span.isStrong || span.isCode) {
            prose.spans.append(span);
        }
    }
    return prose;
}

TEST(InlineMarkdownProperty, MarksMeanWhatAnotherReaderOfCommonMarkSays)
{
    RandomSource sources({u"a"_s, u"b"_s, u" "_s, u"*"_s, u"*"_s, u"**"_s, u"é"_s});

    for (int i = 0; i < 5'000; ++i) {
        const QString source = u"x"_s + sources.next() + u"x"_s;
        const QString collapsed = source.simplified(); // As the other reader does with blanks.
        if (collapsed.contains(u"****"_s)) {
            continue; // It takes such runs apart in another way than the rules.
        }
        EXPECT_EQ(spelled(inlineMarkdown(collapsed)).toStdString(),
                  spelled(readByQt(collapsed)).toStdString())
            << collapsed.toStdString();
    }
}

/// Whether `part` is `whole` without some of its characters, each of which is one of `marks`.
bool isWithoutMarks(const QString &part, const QString &whole, const QString &marks)
{
    qsizetype position = 0;
    for (const QChar character : whole) {
        const bool isKept = position < part.size() && part[position] == character;
        if (isKept) {
            ++position;
        } else if (!marks.contains(character)) {
            return false;
        }
    }
    return position == part.size();
}

TEST(InlineMarkdownProperty, LosesNothingButMarks)
{
    RandomSource sources({u"a"_s, u"word"_s, u" "_s, u"*"_s, u"**"_s, u"_"_s, u"`"_s, u"``"_s,
                          u"\\"_s, u"<b>"_s, u"&amp;"_s, u"\n"_s, u"# "_s, u"- "_s, u"> "_s,
                          u"[a"_s, u"]"_s, u"😀"_s});

    for (int i = 0; i < 20'000; ++i) {
        // A letter in front keeps three backticks from fencing, which would drop more.
        const QString source = sources.next().replace(u'\n', u"\nz"_s).prepend(u'z');
        const Prose prose = inlineMarkdown(source);
        const QString lines = QString(source).replace(u'\n', u' ');
        EXPECT_TRUE(isWithoutMarks(QString(prose.text).replace(u'\n', u' '), lines, u"*_`\\ "_s))
            << source.toStdString() << "\n became \n"
            << prose.text.toStdString();
    }
}

TEST(InlineMarkdownProperty, SpansAreOrderedAndWithinTheText)
{
    RandomSource sources({u"a"_s, u" "_s, u"*"_s, u"**"_s, u"_"_s, u"`"_s, u"\n"_s, u"```\n"_s,
                          u"["_s, u"]("_s, u")"_s, u"!["_s, u"<"_s, u">"_s, u"\\"_s});

    for (int i = 0; i < 20'000; ++i) {
        const QString source = sources.next();
        const Prose prose = inlineMarkdown(source);
        qsizetype end = 0;
        for (const ProseSpan &span : prose.spans) {
            EXPECT_GE(span.start, end) << source.toStdString();
            EXPECT_GT(span.length, 0) << source.toStdString();
            EXPECT_TRUE(span.isCode || span.isEmphasised || span.isStrong);
            end = span.start + span.length;
        }
        EXPECT_LE(end, prose.text.size()) << source.toStdString();
    }
}

/// What makes readers recurse without end, or try every way to pair marks.
TEST(InlineMarkdownProperty, ComesToTheEndOfWhatMakesReadersSlow)
{
    for (const QString &part :
         {u"*a "_s, u"a* "_s, u"*a_ "_s, u"**a *b"_s, u"["_s, u"[]("_s, u"[a](<b"_s, u"![[]()"_s,
          u"[a](b \""_s, u"`a``b"_s, u"<a b='"_s, u"<a "_s, u"\\*"_s, u"*a **b**c* "_s, u"> "_s,
          u"- *a\n"_s, u"```\n"_s, u"_a__b_"_s}) {
        const QString source = part.repeated(50'000 / part.size());
        const Prose prose = inlineMarkdown(source);
        EXPECT_LE(prose.text.size(), 2 * source.size()) << part.toStdString();
    }
}

} // namespace
} // namespace vantrel::test
