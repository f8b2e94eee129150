#pragma once

#include "app/DiffViewModel.h"

#include "ScreenServices.h"

#include <memory>

namespace vantrel::test {

/// A file on the diff screen, loaded, with a model that says what the test pushes.
class OpenedFile
{
public:
    /// `file` must carry hunks unless it is to have none; `neighbours` follow it in the listing.
    explicit OpenedFile(const FileChange &file, const QList<FileChange> &neighbours = {});

    [[nodiscard]] DiffViewModel &diff() { return *m_diff; }

    /// Returns once the model has been asked that often since the file was opened.
    void awaitExplanations(size_t count);

    /// Streams prose into the explanation that was asked for last.
    void pushProse(const QString &text);
    void complete(const HunkExplanation &explanation);
    void fail(const AIServiceError &error);

private:
    [[nodiscard]] ExplanationChannel &lastExplanation();

    ScreenServices m_services{};
    std::unique_ptr<DiffViewModel> m_diff{};
};

} // namespace vantrel::test
