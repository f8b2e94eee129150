// Listing a repository, beside a bare loop that starts the same git processes in turn and throws
// their output away: what is more than that is ours. One row is one round of both, in turns which
// of them is first, so that a busy machine weighs on both alike.

#include "git/FileSystemReader.h"
#include "git/GitEnvironment.h"
#include "git/GitService.h"
#include "git/ProcessRunner.h"
#include "support/TemporaryRepository.h"

#include <benchmark/benchmark.h>

#include <QFile>

#include <chrono>
#include <fcntl.h>
#include <memory>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

using Clock = std::chrono::steady_clock;

constexpr int rounds = 7;

QString trackedName(std::int64_t number)
{
    return u"src/part%1/tracked%2.cpp"_s.arg(number % 20).arg(number, 6, 10, QChar(u'0'));
}

QByteArray content(std::int64_t seed)
{
    QByteArray lines;
    for (int line = 0; line < 60; ++line) {
        lines += "    const auto value" + QByteArray::number(line) + " = compute(" +
                 QByteArray::number(seed * 60 + line) + ");\n";
    }
    return lines;
}

/// So many modified tracked files, each with two hunks, and so many untracked ones.
std::unique_ptr<test::TemporaryRepository> makeRepository(std::int64_t tracked,
                                                          std::int64_t untracked)
{
    auto repository = std::make_unique<test::TemporaryRepository>();
    for (std::int64_t i = 0; i < tracked; ++i) {
        repository->write(trackedName(i), content(i));
    }
    repository->commitAll();
    for (std::int64_t i = 0; i < tracked; ++i) {
        QByteArray lines = content(i);
        lines.replace("value5 =", "changed5 =").replace("value40 =", "changed40 =");
        repository->write(trackedName(i), lines);
    }
    for (std::int64_t i = 0; i < untracked; ++i) {
        repository->write(u"src/new/untracked%1.cpp"_s.arg(i, 6, 10, QChar(u'0')), content(i));
    }
    return repository;
}

/// The commands that a listing of `files` runs, ready for the system.
class Commands
{
public:
    explicit Commands(const QList<FileChange> &files)
    {
        add({"status", "--porcelain=v1", "-z", "--untracked-files=all", "--no-renames"});
        for (const FileChange &file : files) {
            if (!file.isUntracked) {
                add({"diff", "HEAD", "--no-renames", "--", file.path.toUtf8()});
            }
        }
    }

    [[nodiscard]] std::vector<std::vector<char *>> argumentVectors()
    {
        std::vector<std::vector<char *>> vectors;
        for (std::vector<QByteArray> &command : m_commands) {
            std::vector<char *> &words = vectors.emplace_back();
            for (QByteArray &word : command) {
                words.push_back(word.data());
            }
            words.push_back(nullptr);
        }
        return vectors;
    }

private:
    void add(std::initializer_list<QByteArray> arguments)
    {
        std::vector<QByteArray> &words = m_commands.emplace_back(
            std::vector<QByteArray>{"/usr/bin/env", "git", "-c", "core.fsmonitor=", "-c",
                                    "core.pager=cat", "--no-optional-locks"});
        words.insert(words.end(), arguments);
    }

    std::vector<std::vector<QByteArray>> m_commands{};
};

/// The bare loop. False when a command could not be run or failed.
bool runAll(const std::vector<std::vector<char *>> &commands, const char *folder)
{
    posix_spawn_file_actions_t actions{};
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addchdir_np(&actions, folder);
    bool isGood = true;
    for (const std::vector<char *> &command : commands) {
        pid_t child = 0;
        int status = -1;
        isGood = ::posix_spawn(&child, command.front(), &actions, nullptr, command.data(),
                               environ) == 0 &&
                 ::waitpid(child, &status, 0) == child && status == 0 && isGood;
    }
    ::posix_spawn_file_actions_destroy(&actions);
    return isGood;
}

template<typename Action>
double secondsOf(Action action)
{
    const auto begin = Clock::now();
    action();
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

void BM_ChangedFiles(benchmark::State &state)
{
    static const auto repository = makeRepository(state.range(0), state.range(1));
    static int round = 0;
    static QList<FileChange> expected;
    const ProcessRunner runner;
    const FileSystemReader reader;
    GitService service(runner, reader);
    const QUrl root = repository->root();
    const QByteArray folder = QFile::encodeName(repository->path());
    if (expected.isEmpty()) {
        expected = service.changedFiles(root, ListingControl()).value_or(QList<FileChange>());
    }
    if (expected.size() != state.range(0) + state.range(1)) {
        state.SkipWithError("the listing failed");
        return;
    }
    Commands commands(expected);
    const auto vectors = commands.argumentVectors();
    double listing = 0;
    double bare = 0;

    for (auto _ : state) {
        const auto runBare = [&] {
            if (!runAll(vectors, folder.constData())) {
                state.SkipWithError("the bare loop failed");
            }
        };
        const auto runListing = [&] {
            auto files = service.changedFiles(root, ListingControl());
            benchmark::DoNotOptimize(files);
        };
        if (++round % 2 == 0) {
            listing = secondsOf(runListing);
            bare = secondsOf(runBare);
        } else {
            bare = secondsOf(runBare);
            listing = secondsOf(runListing);
        }
        state.SetIterationTime(listing);
    }
    state.counters["bare_seconds"] = bare;
    state.counters["ratio_to_bare"] = listing / bare;
}
BENCHMARK(BM_ChangedFiles)
    ->Args({1'000, 1'000})
    ->Iterations(1)
    ->Repetitions(rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vantrel

int main(int argc, char **argv)
{
    vantrel::pinGitEnvironment();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
