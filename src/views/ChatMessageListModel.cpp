#include "views/ChatMessageListModel.h"

#include "views/InlineMarkdown.h"
#include "views/ShownText.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Growing text is not named: screen readers tell an answer once, when it is complete.
QString accessibleName(const ChatMessage &message)
{
    if (message.isStreaming) {
        return {};
    }
    const QString shown = shownText(message.text);
    return message.role == ChatMessage::Role::user
               ? ChatMessageListModel::tr("You: %1").arg(shown)
               : ChatMessageListModel::tr("Answer: %1").arg(inlineMarkdown(shown).text);
}

} // namespace

void ChatMessageListModel::setChat(ChatThreadViewModel *chat)
{
    if (chat == m_chat) {
        return;
    }
    beginResetModel();
    if (m_chat) {
        m_chat->disconnect(this);
    }
    m_chat = chat;
    m_count = chat == nullptr ? 0 : int(chat->messages().size());
    if (chat != nullptr) {
        connect(chat, &ChatThreadViewModel::messageAppended, this, &ChatMessageListModel::append);
        connect(chat, &ChatThreadViewModel::messageChanged, this, &ChatMessageListModel::change);
        connect(chat, &ChatThreadViewModel::messageRemoved, this, &ChatMessageListModel::remove);
    }
    endResetModel();
    Q_EMIT chatChanged();
    Q_EMIT countChanged();
}

int ChatMessageListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_count;
}

QVariant ChatMessageListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || !m_chat ||
        index.row() >= m_chat->messages().size()) {
        return {};
    }
    const ChatMessage &message = m_chat->messages().at(index.row());
    switch (role) {
    case TextRole:
        return shownText(message.text);
    case IsQuestionRole:
        return message.role == ChatMessage::Role::user;
    case IsStreamingRole:
        return message.isStreaming;
    case AccessibleNameRole:
        return accessibleName(message);
    default:
        return {};
    }
}

QHash<int, QByteArray> ChatMessageListModel::roleNames() const
{
    return {{TextRole, "text"},
            {IsQuestionRole, "isQuestion"},
            {IsStreamingRole, "isStreaming"},
            {AccessibleNameRole, "accessibleName"}};
}

void ChatMessageListModel::append(int row)
{
    beginInsertRows({}, row, row);
    ++m_count;
    endInsertRows();
    Q_EMIT countChanged();
}

void ChatMessageListModel::change(int row)
{
    Q_EMIT dataChanged(index(row), index(row), {TextRole, IsStreamingRole, AccessibleNameRole});
}

void ChatMessageListModel::remove(int row)
{
    beginRemoveRows({}, row, row);
    --m_count;
    endRemoveRows();
    Q_EMIT countChanged();
}

} // namespace vantrel
