// Reading the model's replies: an event stream into text deltas, and deltas into an explanation.
// Beside each stands what it could cost at the least.

#include "StreamInput.h"
#include "ai/HunkExplanationStreamParser.h"
#include "ai/SseDeltaDecoder.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <algorithm>
#include <cstring>

namespace vantrel {
namespace {

using bench::chunkCount;
using bench::eventStream;
using namespace Qt::Literals::StringLiterals;

constexpr qsizetype packetBytes = 16384; // What a socket typically hands over.
constexpr int replyCharacters = 1'000'000;

/// A reply of prose with hyphens in it, the delimiter and the metadata.
QString explanationReply()
{
    const QString sentence = u"Adds a retry - two, at most -- to the upload. "_s;
    QString reply = sentence.repeated(replyCharacters / sentence.size());
    return reply + u"\n---META---\n{\"tag\":\"Bug fix\",\"points\":[\"a\"]}"_s;
}

void decodeEventStream(benchmark::State &state)
{
    const QByteArray stream = eventStream();
    qsizetype deltaCount = 0;
    for ([[maybe_unused]] auto iteration : state) {
        SseDeltaDecoder decoder;
        deltaCount = 0;
        for (qsizetype i = 0; i < stream.size(); i += packetBytes) {
            const auto packet = QByteArrayView(stream).sliced(
                i, std::min<qsizetype>(packetBytes, stream.size() - i));
            const QStringList deltas = decoder.feed(packet);
            deltaCount += deltas.size();
        }
        if (deltaCount != chunkCount || !decoder.isDone()) {
            state.SkipWithError("not every chunk was decoded");
        }
    }
    state.SetItemsProcessed(state.iterations() * chunkCount);
    state.SetBytesProcessed(state.iterations() * stream.size());
}
BENCHMARK(decodeEventStream)->Name("BM_DecodeEventStream")->Unit(benchmark::kMillisecond);

void decodeWithJsonDocument(benchmark::State &state)
{
    const QByteArray stream = eventStream();
    for ([[maybe_unused]] auto iteration : state) {
        qsizetype deltaCount = 0;
        for (const QByteArray &line : stream.split('\n')) {
            if (line.startsWith("data: {")) {
                const QJsonObject chunk = QJsonDocument::fromJson(line.sliced(6)).object();
                const QJsonValue choice = chunk["choices"_L1].toArray().first();
                deltaCount += choice["delta"_L1]["content"_L1].toString().isEmpty() ? 0 : 1;
            }
        }
        if (deltaCount != chunkCount) {
            state.SkipWithError("not every chunk was decoded");
        }
    }
    state.SetItemsProcessed(state.iterations() * chunkCount);
    state.SetBytesProcessed(state.iterations() * stream.size());
}
BENCHMARK(decodeWithJsonDocument)
    ->Name("BM_DecodeEventStream/peer:QJsonDocument")
    ->Unit(benchmark::kMillisecond);

void findLineFeeds(benchmark::State &state)
{
    const QByteArray stream = eventStream();
    for ([[maybe_unused]] auto iteration : state) {
        qsizetype count = 0;
        const char *const end = stream.cend();
        for (const char *position = stream.cbegin(); position != end; ++position) {
            position =
                static_cast<const char *>(std::memchr(position, '\n', size_t(end - position)));
            ++count;
        }
        benchmark::DoNotOptimize(count);
    }
    state.SetItemsProcessed(state.iterations() * chunkCount);
    state.SetBytesProcessed(state.iterations() * stream.size());
}
BENCHMARK(findLineFeeds)->Name("BM_DecodeEventStream/limit:memchr")->Unit(benchmark::kMillisecond);

QStringList pieces(const QString &text, qsizetype size)
{
    QStringList list;
    for (qsizetype i = 0; i < text.size(); i += size) {
        list.append(text.sliced(i, std::min(size, text.size() - i)));
    }
    return list;
}

void parseExplanation(benchmark::State &state)
{
    const QString reply = explanationReply();
    const QStringList deltas = pieces(reply, qsizetype(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) {
        HunkExplanationStreamParser parser;
        qsizetype eventCount = 0;
        for (const QString &delta : deltas) {
            eventCount += parser.feed(delta).size();
        }
        benchmark::DoNotOptimize(eventCount);
        if (const auto events = parser.finish();
            std::get<ExplanationCompleted>(events.last()).explanation.tag != "Bug fix"_L1) {
            state.SkipWithError("the metadata was not found");
        }
    }
    state.SetItemsProcessed(state.iterations() * reply.size());
}
BENCHMARK(parseExplanation)
    ->Name("BM_ParseExplanation/deltaCharacters")
    ->Arg(1)
    ->Arg(8)
    ->Unit(benchmark::kMillisecond);

void appendCharacters(benchmark::State &state)
{
    const QString reply = explanationReply();
    const QStringList deltas = pieces(reply, 1);
    for ([[maybe_unused]] auto iteration : state) {
        QString text;
        for (const QString &delta : deltas) {
            text.append(delta);
        }
        benchmark::DoNotOptimize(text.data());
    }
    state.SetItemsProcessed(state.iterations() * reply.size());
}
BENCHMARK(appendCharacters)
    ->Name("BM_ParseExplanation/limit:append")
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vantrel
