#pragma once

#include "app/ChatThreadViewModel.h"
#include "views/FramePacer.h"

#include <QAbstractListModel>
#include <QPointer>
#include <qqml.h>

namespace vantrel {

/// The messages of a conversation, a row each. Signals exactly the message that comes, grows or
/// goes; the growing of one at most once a frame. Thread: interface.
class ChatMessageListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vantrel::ChatThreadViewModel *chat READ chat WRITE setChat NOTIFY chatChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        TextRole = Qt::UserRole + 1, ///< QString: as it is shown
        IsQuestionRole,              ///< bool: else an answer
        IsStreamingRole,             ///< bool: the answer still grows
        AccessibleNameRole,          ///< QString: empty while the answer grows
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] ChatThreadViewModel *chat() const { return m_chat; }
    void setChat(ChatThreadViewModel *chat);
    [[nodiscard]] int count() const { return m_count; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void chatChanged();
    void countChanged();

private:
    void append(int row);
    void change(int row);
    void remove(int row);
    void announce(int row);

    QPointer<ChatThreadViewModel> m_chat{};
    int m_count = 0; ///< The rows that were announced, which the conversation may be ahead of.
    FramePacer m_grown{[this] { announce(m_count - 1); }}; ///< Only the last message grows.
};

} // namespace vantrel
