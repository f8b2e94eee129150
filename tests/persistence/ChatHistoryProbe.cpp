// Goes on with the numbered history in the folder of the first argument, until the system kills it
// after as many microseconds as the second argument says: with SIGKILL, of which a program hears
// nothing. Prints the number of the newest save, at first and after each save.

#include "persistence/ChatHistoryStore.h"
#include "persistence/NumberedHistory.h"
#include "platform/UserDefaults.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <ctime>

namespace {

bool arrangeDeath(long microseconds)
{
    sigevent event{};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGKILL;
    timer_t timer{};
    itimerspec delay{};
    delay.it_value.tv_sec = microseconds / 1'000'000;
    delay.it_value.tv_nsec = microseconds % 1'000'000 * 1000;
    return ::timer_create(CLOCK_MONOTONIC, &event, &timer) == 0 &&
           ::timer_settime(timer, 0, &delay, nullptr) == 0;
}

void print(int number)
{
    std::printf("%d\n", number);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    vantrel::UserDefaults defaults(arguments.at(1));
    vantrel::ChatHistoryStore history(defaults);
    int number = vantrel::test::newestNumber(history.threads());
    print(number);
    if (!arrangeDeath(arguments.at(2).toLong())) {
        return 1;
    }
    for (;;) {
        ++number;
        history.save(vantrel::test::numberedThread(number));
        print(number);
    }
}
