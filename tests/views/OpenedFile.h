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
    [[nodiscard]] ScreenServices &services() { return m_services; }

    /// These three concern the explanation of the hunk that is selected at first.
    void pushProse(const QString &text);
    void complete(const HunkExplanation &explanation);
    void fail(const AIServiceError &error);

    /// Ends the explanation of the first other hunk.
    void completeInBackground(const HunkExplanation &explanation);

private:
    void awaitExplanations(size_t count);
    [[nodiscard]] ExplanationChannel &openExplanation();

    ScreenServices m_services{};
    std::unique_ptr<DiffViewModel> m_diff{};
};

} // namespace vantrel::test
