#pragma once

#include <QString>
#include <QUuid>

namespace vantrel {

/// One message of the conversation about a hunk. Its id identifies it.
struct ChatMessage
{
    enum class Role { user, assistant };

    QUuid id{};
    Role role = Role::user;
    QString text{};           ///< Grows while an answer streams in.
    bool isStreaming = false; ///< True until an answer is complete.

    bool operator==(const ChatMessage &) const = default;
};

} // namespace vantrel
