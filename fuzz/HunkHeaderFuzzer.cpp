// Any bytes are read as a hunk's header: the starts are those of the naive form and never negative.

#include "FuzzCheck.h"
#include "NaiveDiff.h"
#include "models/DiffParser.h"

using vantrel::HunkStarts;
using vantrel::fuzz::check;

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const HunkStarts starts = vantrel::parseHunkHeader(input);

    check(starts == vantrel::fuzz::naiveParseHunkHeader(input.toByteArray()),
          "fast starts are the naive ones");
    check(starts.oldStart >= 0 && starts.newStart >= 0, "starts are not negative");
}
