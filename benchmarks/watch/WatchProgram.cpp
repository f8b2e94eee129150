// Starts a program on a virtual screen and tells when it has shown what was to be shown:
//   watch_program FRAMEBUFFER LIMIT_SECONDS STEP... -- PROGRAM ARGUMENT...
// Steps, each begun when the one before is done:
//   painted     words or pictures are on the screen, not only a background
//   see:5+7     signs of five and of seven stripes are on the screen
//   click:5     the sign of five stripes, which is on the screen, is clicked
//   rest:2      two seconds pass, for what goes on behind what is seen
// Prints one line of JSON: the seconds from the program's start to the end of each step, null for
// those that did not come within the limit, and the most memory that the program itself held. Then
// the program is killed.

#include "watch/WatchedScreen.h"

#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <fstream>
#include <map>
#include <optional>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace std::chrono_literals;
using vantrel::bench::Sight;
using vantrel::bench::SignPlace;
using vantrel::bench::WatchedScreen;
using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr std::size_t fewestInkPixels = 500; ///< About fifty letters.
constexpr int fewestSignLines = 3;

/// How often a program that draws nothing is asked whether it still lives.
constexpr auto checkInterval = 100ms;

struct Step
{
    enum class Kind { painted, see, click, rest };

    std::string name{};
    Kind kind = Kind::painted;
    std::vector<int> numbers{}; ///< Of stripes, or of seconds.
};

int numberFrom(std::string_view text)
{
    int number = 0;
    const auto end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    if (parsed.ec != std::errc() || parsed.ptr != end) {
        throw std::runtime_error("no number: " + std::string(text));
    }
    return number;
}

Step stepFrom(std::string_view text)
{
    Step step;
    step.name = text;
    if (text == "painted") {
        return step;
    }
    const auto colon = text.find(':');
    const std::string_view word = text.substr(0, colon);
    const std::map<std::string_view, Step::Kind> kinds{
        {"see", Step::Kind::see}, {"click", Step::Kind::click}, {"rest", Step::Kind::rest}};
    if (colon == std::string_view::npos || !kinds.contains(word)) {
        throw std::runtime_error("no step: " + step.name);
    }
    step.kind = kinds.at(word);
    for (auto rest = text.substr(colon + 1);;) {
        const auto plus = rest.find('+');
        step.numbers.push_back(numberFrom(rest.substr(0, plus)));
        if (plus == std::string_view::npos) {
            return step;
        }
        rest.remove_prefix(plus + 1);
    }
}

bool isPainted(const Sight &sight)
{
    // A window may be black before anything is drawn in it.
    return sight.inkPixels >= fewestInkPixels && sight.inkPixels < sight.pixels / 4;
}

std::optional<SignPlace> placeOf(int sign, const Sight &sight)
{
    const auto found = sight.signs.find(sign);
    const bool isThere = found != sight.signs.end() && found->second.lineCount >= fewestSignLines;
    return isThere ? std::optional(found->second) : std::nullopt;
}

/// A running program, which ends with this object.
class Program
{
public:
    explicit Program(std::vector<char *> words)
    {
        words.push_back(nullptr);
        posix_spawnattr_t attributes;
        ::posix_spawnattr_init(&attributes);
        // A group of its own, so that what it started ends with it.
        ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
        const int error =
            ::posix_spawnp(&m_id, words.front(), nullptr, &attributes, words.data(), environ);
        ::posix_spawnattr_destroy(&attributes);
        if (error != 0) {
            throw std::runtime_error(std::string("cannot start ") + words.front());
        }
    }
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;
    ~Program()
    {
        ::kill(-m_id, SIGKILL);
        ::waitpid(m_id, nullptr, 0);
    }

    [[nodiscard]] bool hasEnded() const
    {
        siginfo_t ended{};
        return ::waitid(P_PID, id_t(m_id), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
               ended.si_pid != 0;
    }

    [[nodiscard]] long peakKibibytes() const
    {
        std::ifstream status("/proc/" + std::to_string(m_id) + "/status");
        const std::string_view key = "VmHWM:";
        for (std::string line; std::getline(status, line);) {
            if (line.starts_with(key)) {
                return std::stol(line.substr(key.size()));
            }
        }
        return 0;
    }

private:
    pid_t m_id = 0;
};

void awaitEmpty(WatchedScreen &screen)
{
    while (screen.look().inkPixels > 0) {
        screen.awaitDrawing(checkInterval);
    }
}

/// True once the step is done.
bool tryStep(const Step &step, Clock::time_point begin, WatchedScreen &screen)
{
    if (step.kind == Step::Kind::rest) {
        return Seconds(Clock::now() - begin).count() >= step.numbers.front();
    }
    const Sight sight = screen.look();
    if (step.kind == Step::Kind::painted) {
        return isPainted(sight);
    }
    for (const int sign : step.numbers) {
        const auto place = placeOf(sign, sight);
        if (!place) {
            return false;
        }
        if (step.kind == Step::Kind::click) {
            screen.click(place->x, place->y);
        }
    }
    return true;
}

std::string watch(const std::vector<Step> &steps, double limit, WatchedScreen &screen,
                  const std::vector<char *> &words)
{
    awaitEmpty(screen);
    const auto start = Clock::now();
    const Program program(words);
    std::string json = "{\"steps\": {";
    bool isInTime = true;
    for (const Step &step : steps) {
        const auto begin = Clock::now();
        while (isInTime && !tryStep(step, begin, screen)) {
            if (program.hasEnded()) {
                throw std::runtime_error(std::string(words.front()) + " ended before " + step.name);
            }
            screen.awaitDrawing(checkInterval);
            isInTime = Seconds(Clock::now() - start).count() < limit;
        }
        const double seconds = Seconds(Clock::now() - start).count();
        json += json.back() == '{' ? "\"" : ", \"";
        json += step.name + "\": " + (isInTime ? std::to_string(seconds) : "null");
    }
    return json + "}, \"peakKibibytes\": " + std::to_string(program.peakKibibytes()) + "}";
}

int run(int argc, char **argv)
{
    const std::vector<char *> arguments(argv + 1, argv + argc);
    std::vector<Step> steps;
    std::size_t next = 2;
    while (next < arguments.size() && std::string_view(arguments[next]) != "--") {
        steps.push_back(stepFrom(arguments[next++]));
    }
    if (steps.empty() || next + 1 >= arguments.size()) {
        throw std::runtime_error(
            "usage: watch_program FRAMEBUFFER LIMIT_SECONDS STEP... -- PROGRAM ARGUMENT...");
    }
    WatchedScreen screen(arguments[0]);
    const std::vector<char *> words(arguments.begin() + std::ptrdiff_t(next) + 1, arguments.end());
    std::puts(watch(steps, numberFrom(arguments[1]), screen, words).c_str());
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "watch_program: %s\n", error.what());
        return 1;
    }
}
