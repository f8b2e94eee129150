#include "platform/jobs/Stream.h"

#include "platform/jobs/Channel.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"
#include "support/Tracked.h"
#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace vantrel::test {
namespace {

using Log = std::vector<std::string>;
using Numbers = Stream<int, std::string>;
using NumberChannel = Channel<int, std::string>;

void settle()
{
    RunQueue::interfaceThread().runUntilIdle();
}

std::string described(const std::optional<Numbers::Item> &item)
{
    if (!item) {
        return "end";
    }
    return *item ? std::to_string(**item) : item->error();
}

/// Logs what it reads, `count` times.
Task<> readSome(Numbers *stream, int count, Log *log)
{
    for (int i = 0; i < count; ++i) {
        const auto item = co_await stream->next();
        log->push_back(described(item));
    }
}

Task<> readToTheEnd(Numbers stream, long *sum)
{
    while (const auto item = co_await stream.next()) {
        *sum += item->value_or(0);
    }
}

Task<> readUntilItThrows(Numbers stream, Log *log)
{
    try {
        for (;;) {
            const auto item = co_await stream.next();
            log->push_back(described(item));
        }
    } catch (const std::exception &exception) {
        log->emplace_back(exception.what());
    }
}

Numbers countTo(int last)
{
    for (int i = 1; i <= last; ++i) {
        co_yield i;
    }
}

Numbers failAfterOne(Log *log)
{
    const int one = 1;
    co_yield one;
    Numbers::Item error = failure(std::string("broken"));
    co_yield std::move(error);
    log->emplace_back("the producer ran on");
    const int two = 2;
    co_yield two;
}

Numbers throwAfterOne()
{
    const int one = 1;
    co_yield one;
    throw std::runtime_error("cheese");
}

Numbers yieldEachTime(WaiterList *gate, Tracked parameter)
{
    const Tracked local(parameter);
    for (int i = 1;; ++i) {
        co_await gate->wait();
        co_yield i;
    }
}

TEST(Stream, GivesItsValuesAndThenTheEndEachTime)
{
    Log log;
    Numbers stream = countTo(2);

    const Job job(readSome(&stream, 4, &log));
    settle();

    EXPECT_EQ(log, (Log{"1", "2", "end", "end"}));
}

TEST(Stream, IsOverAfterAnErrorAndItsProducerRunsNoFurther)
{
    Log log;
    Numbers stream = failAfterOne(&log);

    const Job job(readSome(&stream, 4, &log));
    settle();

    EXPECT_EQ(log, (Log{"1", "broken", "end", "end"}));
}

TEST(Stream, PassesAnExceptionOfItsProducerToTheReader)
{
    Log log;

    const Job job(readUntilItThrows(throwAfterOne(), &log));
    settle();

    EXPECT_EQ(log, (Log{"1", "cheese"}));
}

TEST(Stream, ReadsAMillionReadyValuesFlat)
{
    long sum = 0;

    const Job job(readToTheEnd(countTo(1'000'000), &sum));
    settle();

    EXPECT_EQ(sum, 500'000'500'000);
}

TEST(Stream, MayBeReadByOneJobAfterAnother)
{
    Log log;
    Numbers stream = countTo(3);

    const Job first(readSome(&stream, 1, &log));
    settle();
    const Job second(readSome(&stream, 3, &log));
    settle();

    EXPECT_EQ(log, (Log{"1", "2", "3", "end"}));
}

TEST(Stream, DropsItsProducerWhenItIsDroppedBeforeTheFirstRead)
{
    WaiterList gate;
    Lifetimes lifetimes;

    std::optional<Numbers> stream(yieldEachTime(&gate, Tracked(lifetimes)));
    const int before = lifetimes.alive();
    stream.reset();

    EXPECT_EQ(before, 1);
    EXPECT_EQ(lifetimes.alive(), 0);
    EXPECT_EQ(lifetimes.errors(), 0);
}

TEST(Stream, DropsItsProducerWhenAnotherIsAssigned)
{
    WaiterList gate;
    Lifetimes old;
    Lifetimes replacement;
    Numbers stream = yieldEachTime(&gate, Tracked(old));
    Numbers other = yieldEachTime(&gate, Tracked(replacement));

    stream = std::move(other);

    EXPECT_EQ(old.alive(), 0);
    EXPECT_EQ(replacement.alive(), 1);
}

TEST(Stream, IsOverAfterAReaderThatLeftWhileItWaited)
{
    WaiterList gate;
    Lifetimes lifetimes;
    Log log;
    Numbers stream = yieldEachTime(&gate, Tracked(lifetimes));
    Job leaving(readSome(&stream, 1, &log));
    settle();

    leaving.cancel();

    EXPECT_EQ(lifetimes.alive(), 0);
    gate.wakeAll();
    const Job later(readSome(&stream, 1, &log));
    settle();
    EXPECT_EQ(log, Log{"end"});
}

Task<> cancelWhenWoken(WaiterList *gate, Job *job)
{
    co_await gate->wait();
    job->cancel();
}

TEST(Stream, LosesNoValueThatComesAsItsReaderLeaves)
{
    WaiterList gate;
    Lifetimes lifetimes;
    Log log;
    Numbers stream = yieldEachTime(&gate, Tracked(lifetimes));
    Job leaving(readSome(&stream, 1, &log));
    const Job canceller(cancelWhenWoken(&gate, &leaving));
    settle();

    gate.wakeAll(); // The producer yields, and then the reader is cancelled.
    settle();
    const Job later(readSome(&stream, 1, &log));
    settle();

    EXPECT_EQ(log, Log{"1"});
}

TEST(Channel, GivesWhatWasPushedBeforeTheRead)
{
    NumberChannel channel;
    Numbers stream = channel.stream();
    Log log;
    channel.push(1);
    channel.push(2);
    channel.finish();

    const Job job(readSome(&stream, 3, &log));
    settle();

    EXPECT_EQ(log, (Log{"1", "2", "end"}));
}

TEST(Channel, GivesWhatIsPushedWhileItIsRead)
{
    NumberChannel channel;
    Numbers stream = channel.stream();
    Log log;
    const Job job(readSome(&stream, 3, &log));
    settle();

    channel.push(1);
    settle();
    channel.push(2);
    channel.finish();
    settle();

    EXPECT_EQ(log, (Log{"1", "2", "end"}));
}

TEST(Channel, FailsAfterWhatWasPushedBefore)
{
    NumberChannel channel;
    Numbers stream = channel.stream();
    Log log;
    channel.push(1);
    channel.fail("broken");

    const Job job(readSome(&stream, 3, &log));
    settle();

    EXPECT_EQ(log, (Log{"1", "broken", "end"}));
}

TEST(Channel, DropsWhatIsPushedAfterTheEnd)
{
    NumberChannel channel;
    Numbers stream = channel.stream();
    Log log;
    channel.finish();
    channel.push(1);
    channel.fail("broken");

    const Job job(readSome(&stream, 2, &log));
    settle();

    EXPECT_EQ(log, (Log{"end", "end"}));
}

TEST(Channel, PassesOnAMillionPushedValues)
{
    NumberChannel channel;
    long sum = 0;
    const Job job(readToTheEnd(channel.stream(), &sum));
    settle();

    for (int i = 1; i <= 1'000'000; ++i) {
        channel.push(i);
    }
    channel.finish();
    settle();

    EXPECT_EQ(sum, 500'000'500'000);
    EXPECT_FALSE(job.isActive());
}

TEST(Channel, TellsOnceWhenItsReaderGoes)
{
    NumberChannel channel;
    int calls = 0;
    channel.onTermination([&calls] { ++calls; });
    std::optional<Numbers> stream(channel.stream());
    const bool wasTerminated = channel.isTerminated();

    stream.reset();

    EXPECT_FALSE(wasTerminated);
    EXPECT_TRUE(channel.isTerminated());
    EXPECT_EQ(calls, 1);
}

TEST(Channel, DropsItsBufferWithItsReaderAndWhatIsPushedLater)
{
    Lifetimes lifetimes;
    Channel<Tracked, int> channel;
    std::optional<Stream<Tracked, int>> stream(channel.stream());
    channel.push(Tracked(lifetimes));
    const int buffered = lifetimes.alive();

    stream.reset();

    EXPECT_EQ(buffered, 1);
    EXPECT_EQ(lifetimes.alive(), 0);
    channel.push(Tracked(lifetimes));
    EXPECT_EQ(lifetimes.alive(), 0);
}

TEST(Channel, MayBeDroppedBeforeItsReader)
{
    std::optional<NumberChannel> channel(std::in_place);
    Numbers stream = channel->stream();
    Log log;
    channel->push(1);
    channel->finish();
    channel.reset();

    const Job job(readSome(&stream, 2, &log));
    settle();

    EXPECT_EQ(log, (Log{"1", "end"}));
}

} // namespace
} // namespace vantrel::test
