// Any bytes are read as a hunk's header: the starts are those of the naive form and never negative.

#include "FuzzCheck.h"
#include "NaiveDiff.h"
#include "models/DiffParser.h"

#include <cstdint>

using vantrel::HunkStarts;
using vantrel::fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray header(reinterpret_cast<const char *>(data), qsizetype(size));

    const HunkStarts starts = vantrel::parseHunkHeader(header);

    check(starts == vantrel::fuzz::naiveParseHunkHeader(header), "fast starts are the naive ones");
    check(starts.oldStart >= 0 && starts.newStart >= 0, "starts are not negative");
    return 0;
}
