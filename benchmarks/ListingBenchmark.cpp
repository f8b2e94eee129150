// Opening and listing a repository, beside a bare loop that starts the same git processes in turn
// and throws their output away: what is more than that is ours. The two take turns command by
// command, since on a busy machine nothing that lies seconds apart can be compared.

#include "git/FileSystemReader.h"
#include "git/GitEnvironment.h"
#include "git/GitService.h"
#include "git/RepositoryGuard.h"
#include "support/TemporaryRepository.h"

#include <benchmark/benchmark.h>

#include <QFile>

#include <chrono>
#include <fcntl.h>
#include <memory>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

using Clock = std::chrono::steady_clock;

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

/// The bare way to run a command: nothing is read, nothing is kept.
class BareSpawn
{
public:
    explicit BareSpawn(const QString &folder)
    {
        ::posix_spawn_file_actions_init(&m_actions);
        ::posix_spawn_file_actions_addopen(&m_actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_addopen(&m_actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_addchdir_np(&m_actions, QFile::encodeName(folder).constData());
    }
    BareSpawn(const BareSpawn &) = delete;
    BareSpawn &operator=(const BareSpawn &) = delete;
    ~BareSpawn() { ::posix_spawn_file_actions_destroy(&m_actions); }

    /// False when the command could not be run or failed. `words` ends in a null pointer.
    [[nodiscard]] bool run(const std::vector<char *> &words) const
    {
        pid_t child = 0;
        int status = -1;
        return ::posix_spawn(&child, words.front(), &m_actions, nullptr, words.data(), environ) ==
                   0 &&
               ::waitpid(child, &status, 0) == child && status == 0;
    }

private:
    posix_spawn_file_actions_t m_actions{};
};

using Seconds = std::chrono::duration<double>;

/// The processor time of this process and of the children that it waited for. Other programs on the
/// machine have little to say in it, unlike in the time that passes.
Seconds processorTime()
{
    Seconds sum{};
    for (const int who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        ::getrusage(who, &usage);
        for (const timeval &time : {usage.ru_utime, usage.ru_stime}) {
            sum += std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
        }
    }
    return sum;
}

/// What something took.
struct Cost
{
    Seconds elapsed{};
    Seconds processor{};

    Cost &operator+=(const Cost &other)
    {
        elapsed += other.elapsed;
        processor += other.processor;
        return *this;
    }
    Cost &operator-=(const Cost &other)
    {
        elapsed -= other.elapsed;
        processor -= other.processor;
        return *this;
    }
};

template<typename Action>
Cost costOf(Action action)
{
    const auto begin = Clock::now();
    const Seconds processorBefore = processorTime();
    action();
    return {Clock::now() - begin, processorTime() - processorBefore};
}

/// The real runner, which also runs each command the bare way, before or after in turns.
class ComparingRunner final : public ProcessRunning
{
public:
    ComparingRunner(const ProcessRunning &runner, const QString &folder)
        : m_runner(runner)
        , m_bare(folder)
    {}

    [[nodiscard]] Result<TextSlice, ProcessFailure>
    run(const QString &command, const QStringList &arguments, const QUrl &directory) const override
    {
        m_isBareFirst = !m_isBareFirst;
        if (m_isBareFirst) {
            runBare(command, arguments);
        }
        auto output = m_runner.run(command, arguments, directory);
        if (!m_isBareFirst) {
            runBare(command, arguments);
        }
        return output;
    }

    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }
    [[nodiscard]] const Cost &bareCost() const { return m_bareCost; }

    /// What the comparison took, with the bare commands.
    [[nodiscard]] const Cost &comparisonCost() const { return m_comparisonCost; }

private:
    void runBare(const QString &command, const QStringList &arguments) const
    {
        m_comparisonCost += costOf([&] {
            std::vector<QByteArray> words{"/usr/bin/env", command.toUtf8()};
            for (const QString &argument : arguments) {
                words.push_back(argument.toUtf8());
            }
            std::vector<char *> pointers;
            for (QByteArray &word : words) {
                pointers.push_back(word.data());
            }
            pointers.push_back(nullptr);
            m_bareCost += costOf([&] { m_hasFailed = !m_bare.run(pointers) || m_hasFailed; });
        });
    }

    const ProcessRunning &m_runner;
    BareSpawn m_bare;
    mutable Cost m_bareCost{};
    mutable Cost m_comparisonCost{};
    mutable bool m_isBareFirst = false;
    mutable bool m_hasFailed = false;
};

void BM_ChangedFiles(benchmark::State &state)
{
    static const auto repository = makeRepository(state.range(0), state.range(1));
    const FileSystemReader reader;
    Cost listing{};
    Cost bare{};

    for (auto _ : state) {
        RepositoryGuard guard;
        const ComparingRunner runner(guard, repository->path());
        GitService service(runner, reader);
        qsizetype fileCount = 0;
        listing = costOf([&] {
            const bool isInspected = guard.inspect(repository->root()).has_value();
            const auto files = service.changedFiles(repository->root(), ListingControl());
            fileCount = isInspected && files ? files->size() : 0;
        });
        if (fileCount != state.range(0) + state.range(1) || runner.hasFailed()) {
            state.SkipWithError("a command failed");
            break;
        }
        bare = runner.bareCost();
        listing -= runner.comparisonCost();
        state.SetIterationTime(listing.elapsed.count());
    }
    state.counters["bare_seconds"] = bare.elapsed.count();
    state.counters["ratio_to_bare"] = listing.elapsed / bare.elapsed;
    state.counters["processor_ratio_to_bare"] = listing.processor / bare.processor;
}
BENCHMARK(BM_ChangedFiles)
    ->Args({1'000, 1'000})
    ->Iterations(1)
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
