#pragma once

#include <QByteArray>

namespace vantrel::bench {

enum class DiffShape { manyHunks, oneHunk };

/// One path's diff as git prints it, preamble included, of `megabytes` million bytes and a little
/// more. The same on every run.
[[nodiscard]] QByteArray diffInput(DiffShape shape, int megabytes);

} // namespace vantrel::bench
