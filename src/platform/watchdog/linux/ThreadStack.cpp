#include "platform/watchdog/linux/ThreadStack.h"

#include <array>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <execinfo.h>
#include <semaphore.h>
#include <unistd.h>

namespace vantrel {

namespace {

constexpr int maxFrames = 64;
constexpr std::size_t handlerStackBytes = std::size_t(128) * 1024;

/// What the handlers share with the thread that asked: there is nothing else in a handler's reach.
struct Shared
{
    std::array<void *, maxFrames> frames{};
    int count = 0;
    sem_t isCaptured{};
    int crashFile = -1;
};

Shared &shared()
{
    static Shared all;
    return all;
}

void captureStack(int)
{
    shared().count = ::backtrace(shared().frames.data(), maxFrames);
    ::sem_post(&shared().isCaptured);
}

void writeCrash(int signal)
{
    std::array<char, 32> line{};
    const int size = std::snprintf(line.data(), line.size(), "crash %d\n", signal);
    std::array<void *, maxFrames> frames{};
    const int count = ::backtrace(frames.data(), maxFrames);
    if (::write(shared().crashFile, line.data(), std::size_t(size)) == size) {
        ::backtrace_symbols_fd(frames.data(), count, shared().crashFile);
    }
    // The handler was for once, so this is the end that the signal has without it.
    std::raise(signal);
}

void handle(int signal, void (*handler)(int), int flags)
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    ::sigaction(signal, &action, nullptr);
}

/// The first use loads a library, which a handler must not do.
void prepareStacks()
{
    std::array<void *, 1> frame{};
    ::backtrace(frame.data(), 1);
}

} // namespace

void writeStackOfThread(pthread_t thread, int file)
{
    static const bool isPrepared = [] {
        prepareStacks();
        ::sem_init(&shared().isCaptured, 0, 0);
        handle(SIGRTMIN, captureStack, SA_RESTART);
        return true;
    }();
    static_cast<void>(isPrepared);
    timespec limit{};
    ::clock_gettime(CLOCK_REALTIME, &limit);
    limit.tv_sec += 1;
    if (::pthread_kill(thread, SIGRTMIN) == 0 &&
        ::sem_timedwait(&shared().isCaptured, &limit) == 0) {
        ::backtrace_symbols_fd(shared().frames.data(), shared().count, file);
    }
}

void writeStackAtCrash(int file)
{
    prepareStacks();
    // Of its own, since the thread's may be what is used up.
    static std::array<char, handlerStackBytes> handlerStack{};
    const stack_t stack{handlerStack.data(), 0, handlerStack.size()};
    ::sigaltstack(&stack, nullptr);
    shared().crashFile = file;
    for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT}) {
        handle(signal, writeCrash, int(SA_RESETHAND) | SA_ONSTACK);
    }
}

} // namespace vantrel
