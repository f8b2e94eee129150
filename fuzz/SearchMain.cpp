// What libFuzzer calls. It searches among short inputs, and for more than linear time as well:
//
// A reader of more than linear time is slow only with long inputs, nearly always with repeated
// ones, and libFuzzer hardly ever makes such. So one mutation in 1024 repeats a piece of an input
// until 64 KiB are full ("pumps" it). A long input may take a second of this process's own time,
// which other programs do not lengthen: linear readers take some milliseconds with their
// sanitizers, one that looks at everything again for each byte takes minutes. Long inputs never
// enter the corpus, which would make the search slow.

#include "FuzzCheck.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <random>

namespace {

constexpr std::size_t maxShortBytes = 2048;
constexpr std::clock_t maxTicks = CLOCKS_PER_SEC;
constexpr unsigned mutationsPerPumping = 1024;

/// Repeats a piece of the data, with what stands before it in front, until `maxSize` bytes are
/// full.
void pump(std::uint8_t *data, std::size_t size, std::size_t maxSize, std::minstd_rand &random)
{
    const std::size_t begin = random() % size;
    const std::size_t period = random() % (size - begin) + 1;
    for (std::size_t i = begin + period; i < maxSize; ++i) {
        data[i] = data[i - period];
    }
}

} // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t maxSize);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size,
                                               std::size_t maxSize, unsigned seed)
{
    std::minstd_rand random(seed);
    if (size > 0 && random() % mutationsPerPumping == 0) {
        pump(data, size, maxSize, random);
        return maxSize;
    }
    return LLVMFuzzerMutate(data, size, std::min(maxSize, std::max(size, maxShortBytes)));
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr int isNoneOfTheCorpus = -1;
    const std::clock_t begin = std::clock();
    vantrel::fuzz::tryInput(QByteArrayView(data, qsizetype(size)));
    vantrel::fuzz::check(std::clock() - begin < maxTicks, "an input is read within a second");
    return size > maxShortBytes ? isNoneOfTheCorpus : 0;
}
