#pragma once

#include "models/HunkExplanation.h"

#include <QString>

#include <variant>

namespace vantrel {

/// The next piece of prose.
struct ProseDelta
{
    QString text{};

    bool operator==(const ProseDelta &) const = default;
};

/// No more prose will come.
struct ProseFinished
{
    bool operator==(const ProseFinished &) const = default;
};

/// The final record; always the last event.
struct ExplanationCompleted
{
    HunkExplanation explanation{};

    bool operator==(const ExplanationCompleted &) const = default;
};

/// A step of an explanation that streams in.
using HunkExplanationStreamEvent = std::variant<ProseDelta, ProseFinished, ExplanationCompleted>;

} // namespace vantrel
