#include "views/CodePanesItem.h"

#include "LargeFile.h"
#include "OpenedFile.h"
#include "SamplePanesTheme.h"
#include "ScreenServices.h"

#include "platform/jobs/RunQueue.h"

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr QSize viewport(900, 708); // Both panes of a window of 1280 by 824.
constexpr int rowsOfHunk = 50;

/// The panes over an opened file, drawn into a picture of the viewport's size.
class Panes
{
public:
    Panes(int lines, const QString &text)
        : m_file(bench::largeFile(lines, rowsOfHunk, text))
    {
        test::fillSizesAndFonts(m_theme);
        m_item.setSize(viewport);
        m_item.setTheme(&m_theme);
        m_item.setDiff(&m_file.diff());
        runUntil([this] { return m_item.longestLine() > 0; });
    }

    [[nodiscard]] CodePanesItem &item() { return m_item; }

    void draw()
    {
        QPainter painter(&m_picture);
        m_item.paint(&painter);
    }

private:
    OpenedFile m_file;
    QObject m_theme{};
    CodePanesItem m_item{};
    QImage m_picture{viewport, QImage::Format_ARGB32_Premultiplied};
};

void BM_DrawNextPage(benchmark::State &state)
{
    Panes panes(int(state.range(0)), bench::ordinaryLine());
    CodePanesItem &item = panes.item();
    for (auto _ : state) {
        const qreal next = item.contentY() + viewport.height();
        item.setContentY(next + viewport.height() > item.contentHeight() ? 0 : next);
        panes.draw();
    }
}
BENCHMARK(BM_DrawNextPage)->Arg(200)->Arg(200'000)->Unit(benchmark::kMicrosecond);

/// Each row in view holds a line of this many characters, scrolled to its end.
void BM_DrawEndsOfLongLines(benchmark::State &state)
{
    Panes panes(rowsOfHunk, u"x"_s.repeated(state.range(0)));
    panes.item().setContentX(panes.item().maximumContentX());
    for (auto _ : state) {
        panes.draw();
    }
}
BENCHMARK(BM_DrawEndsOfLongLines)->Arg(100)->Arg(100'000)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace vantrel::test

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    vantrel::RunQueue::interfaceThread();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
