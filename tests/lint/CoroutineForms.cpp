// Forms of co_await that g++ 12 compiles wrongly when the frame is destroyed, each marked with
// "// bad", beside the forms that replace them. The coroutine lint is run over this file first and
// must flag exactly the marked lines. Never linked into anything.

#include "platform/jobs/Task.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vantrel {
namespace {

struct Tracked
{
    explicit Tracked(int value)
        : number(std::make_shared<int>(value))
    {}
    std::shared_ptr<int> number;
};

struct Record
{
    Tracked first;
    Tracked second;
    int count = 3;
};

class Pair
{
public:
    Pair(Tracked first, Tracked second)
        : m_first(std::move(first))
        , m_second(std::move(second))
    {}

private:
    Tracked m_first;
    Tracked m_second;
};

Task<Tracked> tracked();
Task<int> takeTracked(Tracked value);
Task<int> takeRecord(Record record);
Task<int> takeRecordByReference(const Record &record);
Task<int> takePair(Pair pair);
Task<int> takeStdPair(std::pair<Tracked, Tracked> pair);
Task<int> takeFunction(std::function<int()> function);
Task<int> takeVector(std::vector<Tracked> values);
Record makeRecord();
int plainRecord(Record record, int number);

Task<> aggregateArgument()
{
    co_await takeRecord(Record{Tracked(1), Tracked(2)}); // bad
}

Task<> designatedArgument()
{
    co_await takeRecord({.first = Tracked(1), .second = Tracked(2), .count = 4}); // bad
}

Task<> aggregateByReference()
{
    co_await takeRecordByReference(Record{Tracked(1), Tracked(2)}); // bad
}

Task<> aggregateBesideAwait()
{
    plainRecord(Record{Tracked(1), Tracked(2)}, co_await takeTracked(Tracked(3))); // bad
}

Task<> closureArgument()
{
    const Tracked captured(8);
    co_await takeFunction([captured] { return *captured.number; }); // bad
}

Task<> listArgument()
{
    co_await takeVector({Tracked(1), Tracked(2)}); // bad
}

Task<> awaitInBraces()
{
    const Record record{Tracked(1), Tracked(2), co_await takeTracked(Tracked(1))}; // bad
    (void)record;
}

Task<> ternaryOfClassType(bool condition)
{
    const Tracked value = condition ? co_await tracked() : Tracked(0); // bad
    (void)value;
}

Task<> plainTemporary()
{
    co_await takeTracked(Tracked(1));
}

Task<> constructedArgument()
{
    co_await takePair(Pair(Tracked(1), Tracked(2)));
}

Task<> pairOfBraces()
{
    co_await takeStdPair({Tracked(1), Tracked(2)});
}

Task<> namedAggregate()
{
    Record record{Tracked(1), Tracked(2)};
    co_await takeRecord(std::move(record));
}

Task<> aggregateFromFunction()
{
    co_await takeRecord(makeRecord());
}

Task<> namedClosure()
{
    const Tracked captured(8);
    const std::function<int()> function = [captured] { return *captured.number; };
    co_await takeFunction(function);
}

Task<> branch(bool condition)
{
    Tracked value(0);
    if (condition) {
        value = co_await tracked();
    }
}

} // namespace
} // namespace vantrel
