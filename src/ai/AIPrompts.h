#pragma once

#include "models/ChatMessage.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace vantrel {

/// One changed file as the narrative's request names it.
struct ChangesetEntry
{
    QString path{};
    QString text{}; ///< The file's summary, or its diff cut for prompting.

    bool operator==(const ChangesetEntry &) const = default;
};

/// The words in which the model is asked. Diffs and paths go in as they are. A text that holds a
/// diff comes in pieces that follow one another, since diffs may be too large to be copied between
/// frames.
namespace prompts {

[[nodiscard]] QString fullPicture();
[[nodiscard]] QString fileSummary();
[[nodiscard]] QString hunkExplanation();
[[nodiscard]] QString suggestions();

/// The system message of a follow-up conversation, which names the hunk.
[[nodiscard]] QStringList followUp(const QString &path, const QString &hunkText);

[[nodiscard]] QStringList fileSummaryMessage(const QString &path, const QString &diffText);
[[nodiscard]] QString fullPictureMessage(const QList<ChangesetEntry> &entries);

/// `fullPicture` is left out when it is empty; blanks count as a text.
[[nodiscard]] QStringList hunkExplanationMessage(const QString &path, const QString &hunkText,
                                                 const QString &fullPicture);
[[nodiscard]] QStringList suggestionsMessage(const QString &path, const QString &hunkText,
                                             const QList<ChatMessage> &conversation);

/// The name of a message's role, on the wire and in prompts.
[[nodiscard]] QString roleName(ChatMessage::Role role);

} // namespace prompts
} // namespace vantrel
