#include "views/InlineMarkdown.h"

#include <benchmark/benchmark.h>

#include <QStringList>

namespace vantrel::bench {
namespace {

using namespace Qt::Literals::StringLiterals;

/// What makes readers of Markdown look back again and again, of `size` characters each.
QStringList hostileTexts(qsizetype size)
{
    QStringList texts;
    for (const QString &part :
         {u"*a "_s, u"a* "_s, u"*a_ "_s, u"**a *b"_s, u"["_s, u"[]("_s, u"[a](<b"_s, u"![[]()"_s,
          u"[a](b \""_s, u"`a``b"_s, u"<a b='"_s, u"<a "_s, u"\\*"_s, u"*a **b**c* "_s, u"> "_s,
          u"- *a\n"_s, u"```\n"_s, u"_a__b_"_s}) {
        texts.append(part.repeated(size / part.size()));
    }
    return texts;
}

void BM_ReadHostileMarkdown(benchmark::State &state)
{
    const QStringList texts = hostileTexts(state.range(0));
    for (auto _ : state) {
        for (const QString &text : texts) {
            benchmark::DoNotOptimize(inlineMarkdown(text));
        }
    }
}
BENCHMARK(BM_ReadHostileMarkdown)->Arg(50'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vantrel::bench
