// What a frame of the diff screen costs the interface thread, in the whole window: while a large
// file is scrolled, while an answer streams in, and both at once. Prints one JSON object for each
// figure; all but the counts are milliseconds.
//   vantrel_screen_benchmark [PART...]     scroll, small, explanation, answer, delta

#include "LargeFile.h"
#include "platform/jobs/RunQueue.h"
#include "screens/ReviewScreen.h"

#include <QQmlExtensionPlugin>
#include <QQuickWindow>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <stdexcept>
#include <utility>

Q_IMPORT_QML_PLUGIN(VantrelPlugin)

namespace vantrel::bench {
namespace {

using namespace Qt::Literals::StringLiterals;
using Motion = ReviewScreen::Motion;

constexpr int manyLines = 100'000;
constexpr int ordinaryHunk = 50;
constexpr int smallHunk = 2;
constexpr int pageCount = 300;
constexpr int chunkCount = 10'000;
constexpr int chunksOfParagraph = 60;
constexpr int pagesAfterBurst = 20;
constexpr int deltaCount = 200;

using Costs = QList<double>;

double median(Costs costs)
{
    const auto middle = costs.begin() + costs.size() / 2;
    std::nth_element(costs.begin(), middle, costs.end());
    return *middle;
}

void print(const char *figure, const char *of, double value)
{
    std::printf(R"({"figure": "%s/%s", "value": %.6f})"
                "\n",
                figure, of, value);
}

void printFrames(const char *figure, const QList<FrameCost> &frames)
{
    Costs processor;
    Costs busy;
    for (const FrameCost &frame : frames) {
        processor.append(frame.processor);
        busy.append(frame.busy);
    }
    print(figure, "frames", double(frames.size()));
    print(figure, "median", median(processor));
    print(figure, "slowest", *std::max_element(processor.cbegin(), processor.cend()));
    print(figure, "medianBusy", median(busy));
    print(figure, "slowestBusy", *std::max_element(busy.cbegin(), busy.cend()));
}

FileChange changedFile(int lines, int linesOfHunk)
{
    return largeFile(lines, linesOfHunk, ordinaryLine());
}

HunkExplanation someExplanation()
{
    HunkExplanation explanation;
    explanation.tag = u"refactor"_s;
    explanation.explanation = u"The value is computed in one place."_s;
    return explanation;
}

void scroll(const MeteredApplication &application, const char *figure, int linesOfHunk)
{
    ReviewScreen screen(application, changedFile(manyLines, linesOfHunk), Motion::full);
    screen.explanation().push(ExplanationCompleted{someExplanation()});
    screen.pressPageDown();
    screen.awaitFrame();
    screen.meter().restart();
    QList<FrameCost> pages;
    for (int page = 0; page < pageCount; ++page) {
        screen.meter().restart();
        screen.pressPageDown();
        screen.awaitFrame();
        pages += screen.meter().frames();
    }
    printFrames(figure, pages);
}

/// The pieces of an answer, of one to twenty characters, in paragraphs of some hundred words.
QStringList chunks()
{
    const QString letters = u"etaoinshrdlu mfwygpbvk xqjz,. "_s;
    std::minstd_rand random(20'240'607);
    const auto draw = [&random](qsizetype bound) { return qsizetype(random() % unsigned(bound)); };
    QStringList chunks;
    for (int i = 0; i < chunkCount; ++i) {
        QString chunk;
        for (qsizetype left = 1 + draw(20); left > 0; --left) {
            chunk += letters.at(draw(letters.size()));
        }
        chunks.append((i + 1) % chunksOfParagraph == 0 ? u"\n\n"_s : chunk);
    }
    return chunks;
}

/// Scrolls at every frame until `isRead`, and on until what was read last is on the screen.
template<typename IsRead>
void scrollUntil(const char *figure, ReviewScreen &screen, IsRead isRead)
{
    screen.meter().restart();
    for (int pagesAfter = 0; pagesAfter < pagesAfterBurst; pagesAfter += isRead() ? 1 : 0) {
        screen.pressPageDown();
        screen.awaitFrame();
    }
    printFrames(figure, screen.meter().frames());
}

void burstOfExplanation(const MeteredApplication &application)
{
    ReviewScreen screen(application, changedFile(manyLines, ordinaryHunk), Motion::full);
    test::ExplanationChannel &explanation = screen.explanation();
    qsizetype length = 0;
    for (const QString &chunk : chunks()) {
        explanation.push(ProseDelta{chunk});
        length += chunk.size();
    }
    scrollUntil("burst of an explanation", screen, [&] {
        return screen.diff().streamingExplanationText(0).value_or(QString()).size() == length;
    });
}

void burstOfAnswer(const MeteredApplication &application)
{
    ReviewScreen screen(application, changedFile(manyLines, ordinaryHunk), Motion::full);
    screen.explanation().push(ExplanationCompleted{someExplanation()});
    ReviewScreen::runUntil(
        [&] { return screen.diff().selectedHunk()->explanationState.isLoaded(); });
    const ChatThreadViewModel &chat = *screen.diff().chatViewModel(0);
    auto &answer = screen.ask(u"Why?"_s);
    // Its bubble is made with its first frame.
    answer.push(u"Since "_s);
    ReviewScreen::runUntil([&] { return !chat.messages().last().text.isEmpty(); });
    screen.awaitFrame();
    qsizetype length = chat.messages().last().text.size();
    for (const QString &chunk : chunks()) {
        answer.push(chunk);
        length += chunk.size();
    }
    scrollUntil("burst of an answer", screen,
                [&] { return chat.messages().last().text.size() == length; });
}

double costOfDelta(ReviewScreen &screen)
{
    screen.meter().restart();
    screen.explanation().push(ProseDelta{u"word "_s});
    screen.awaitFrame();
    return screen.meter().frames().constFirst().processor;
}

/// The two files take turns, so that what else the machine does falls on both alike.
void deltas(const MeteredApplication &application)
{
    ReviewScreen few(application, changedFile(10, 10), Motion::reduced);
    ReviewScreen many(application, changedFile(manyLines, ordinaryHunk), Motion::reduced);
    Costs costsOfFew;
    Costs costsOfMany;
    for (int i = 0; i < deltaCount; ++i) {
        costsOfFew.append(costOfDelta(few));
        costsOfMany.append(costOfDelta(many));
    }
    print("delta", "10 rows", median(costsOfFew));
    print("delta", "100000 rows", median(costsOfMany));
}

/// All parts, or those that are named: for a profiler.
void run(const MeteredApplication &application)
{
    using Part = std::pair<QString, std::function<void()>>;
    const QList<Part> parts{
        {u"scroll"_s, [&] { scroll(application, "scroll", ordinaryHunk); }},
        {u"small"_s, [&] { scroll(application, "scroll small hunks", smallHunk); }},
        {u"explanation"_s, [&] { burstOfExplanation(application); }},
        {u"answer"_s, [&] { burstOfAnswer(application); }},
        {u"delta"_s, [&] { deltas(application); }},
    };
    const QStringList named = QCoreApplication::arguments().mid(1);
    for (const auto &[name, measure] : parts) {
        if (named.isEmpty() || named.contains(name)) {
            measure();
        }
    }
}

} // namespace
} // namespace vantrel::bench

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const vantrel::bench::MeteredApplication application(argc, argv);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    vantrel::RunQueue::interfaceThread();
    try {
        vantrel::bench::run(application);
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "vantrel_screen_benchmark: %s\n", error.what());
        return 1;
    }
}
