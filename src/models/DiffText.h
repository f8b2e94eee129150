#pragma once

#include <QString>

namespace vantrel {

struct FileChange;
struct Hunk;

/// The text that identifies a file's change in caches and prompts: every line of every hunk,
/// prefixed " ", "+" or "-", joined by line feeds; headers are left out.
[[nodiscard]] QString fileDiffText(const FileChange &file);

/// The text that identifies a hunk in caches, histories and prompts: its rows as "-", "+" and " "
/// lines, a row's deletion before its addition, joined by line feeds.
[[nodiscard]] QString hunkDiffText(const Hunk &hunk);

} // namespace vantrel
