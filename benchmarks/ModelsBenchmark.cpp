// The reading of diffs and their laying out as rows, beside a peer in C and the limits that the
// memory sets. Every row of a report covers the making and the release of its records.

#include "DiffInputs.h"
#include "models/DiffParser.h"
#include "models/RowAligner.h"

#include <benchmark/benchmark.h>

#ifdef VANTREL_HAS_LIBGIT2
#include <git2.h>
#endif

#include <cstring>

namespace vantrel::bench {

namespace {

std::int64_t lineCount(const QList<RawHunk> &hunks)
{
    std::int64_t count = 0;
    for (const RawHunk &hunk : hunks) {
        count += hunk.lines.size();
    }
    return count;
}

/// Bytes that the records take beside the text of the diff.
std::int64_t recordBytes(const QList<RawHunk> &hunks)
{
    std::int64_t bytes = hunks.capacity() * qsizetype(sizeof(RawHunk));
    for (const RawHunk &hunk : hunks) {
        bytes +=
            qsizetype(sizeof(QArrayData)) + hunk.lines.capacity() * qsizetype(sizeof(RawDiffLine));
    }
    return bytes;
}

void setBytes(benchmark::State &state, const QByteArray &input)
{
    state.SetBytesProcessed(state.iterations() * input.size());
}

void BM_ParseUnifiedDiff(benchmark::State &state, DiffShape shape, int megabytes)
{
    const QByteArray input = diffInput(shape, megabytes);
    const QList<RawHunk> sample = parseUnifiedDiff(TextSlice::fromUtf8(input));

    for (auto _ : state) {
        QList<RawHunk> hunks = parseUnifiedDiff(TextSlice::fromUtf8(input));
        benchmark::DoNotOptimize(hunks);
    }

    setBytes(state, input);
    state.counters["recordBytesPerLine"] = double(recordBytes(sample)) / double(lineCount(sample));
}

/// The limit of parsing: finding the line feeds.
void BM_FindLineFeeds(benchmark::State &state, DiffShape shape, int megabytes)
{
    const QByteArray input = diffInput(shape, megabytes);

    for (auto _ : state) {
        std::int64_t count = 0;
        const char *position = input.constData();
        const char *const end = position + input.size();
        while (position < end) {
            const void *const found = std::memchr(position, '\n', size_t(end - position));
            if (found == nullptr) {
                break;
            }
            position = static_cast<const char *>(found) + 1;
            ++count;
        }
        benchmark::DoNotOptimize(count);
    }

    setBytes(state, input);
}

#ifdef VANTREL_HAS_LIBGIT2

/// Bytes in all lines of the patch.
size_t walk(git_patch *patch)
{
    size_t bytes = 0;
    const size_t hunkCount = git_patch_num_hunks(patch);
    for (size_t hunk = 0; hunk < hunkCount; ++hunk) {
        const int lineCount = git_patch_num_lines_in_hunk(patch, hunk);
        for (int i = 0; i < lineCount; ++i) {
            const git_diff_line *line = nullptr;
            git_patch_get_line_in_hunk(&line, patch, hunk, size_t(i));
            bytes += line->content_len;
        }
    }
    return bytes;
}

/// The peer of parsing: libgit2, from the same bytes to its own records of every line.
void BM_Libgit2ParseDiff(benchmark::State &state, DiffShape shape, int megabytes)
{
    const QByteArray input = diffInput(shape, megabytes);
    git_libgit2_init();

    for (auto _ : state) {
        git_diff *diff = nullptr;
        git_patch *patch = nullptr;
        if (git_diff_from_buffer(&diff, input.constData(), size_t(input.size())) != 0 ||
            git_patch_from_diff(&patch, diff, 0) != 0) {
            state.SkipWithError("libgit2 does not read the diff");
            break;
        }
        size_t bytes = walk(patch);
        benchmark::DoNotOptimize(bytes);
        git_patch_free(patch);
        git_diff_free(diff);
    }

    git_libgit2_shutdown();
    setBytes(state, input);
}

#endif

void BM_AlignRows(benchmark::State &state, DiffShape shape, int megabytes)
{
    const QByteArray input = diffInput(shape, megabytes);
    const QList<RawHunk> hunks = parseUnifiedDiff(TextSlice::fromUtf8(input));

    for (auto _ : state) {
        QList<QList<DiffRow>> rows;
        rows.reserve(hunks.size());
        for (const RawHunk &hunk : hunks) {
            rows.append(alignRows(hunk.oldStart, hunk.newStart, hunk.lines));
        }
        benchmark::DoNotOptimize(rows);
    }

    setBytes(state, input);
}

/// The limit of aligning: one pass that writes the finished rows.
void BM_WriteRows(benchmark::State &state, DiffShape shape, int megabytes)
{
    const QByteArray input = diffInput(shape, megabytes);
    QList<QList<DiffRow>> aligned;
    for (const RawHunk &hunk : parseUnifiedDiff(TextSlice::fromUtf8(input))) {
        aligned.append(alignRows(hunk.oldStart, hunk.newStart, hunk.lines));
    }

    for (auto _ : state) {
        QList<QList<DiffRow>> copies;
        copies.reserve(aligned.size());
        for (const QList<DiffRow> &rows : aligned) {
            QList<DiffRow> copy;
            copy.reserve(rows.size());
            copy.append(rows.cbegin(), rows.cend());
            copies.append(copy);
        }
        benchmark::DoNotOptimize(copies);
    }

    setBytes(state, input);
}

} // namespace

#define VANTREL_DIFF_BENCHMARK(name)                                                               \
    BENCHMARK_CAPTURE(name, manyHunks1MB, DiffShape::manyHunks, 1)->Unit(benchmark::kMillisecond); \
    BENCHMARK_CAPTURE(name, manyHunks20MB, DiffShape::manyHunks, 20)                               \
        ->Unit(benchmark::kMillisecond);                                                           \
    BENCHMARK_CAPTURE(name, oneHunk20MB, DiffShape::oneHunk, 20)->Unit(benchmark::kMillisecond)

VANTREL_DIFF_BENCHMARK(BM_FindLineFeeds);
VANTREL_DIFF_BENCHMARK(BM_ParseUnifiedDiff);
#ifdef VANTREL_HAS_LIBGIT2
VANTREL_DIFF_BENCHMARK(BM_Libgit2ParseDiff);
#endif
VANTREL_DIFF_BENCHMARK(BM_AlignRows);
VANTREL_DIFF_BENCHMARK(BM_WriteRows);

} // namespace vantrel::bench
