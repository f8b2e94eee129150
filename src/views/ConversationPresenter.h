#pragma once

#include "app/ChatThreadViewModel.h"
#include "app/DiffViewModel.h"

#include <QObject>
#include <QPointer>
#include <qqml.h>

namespace vantrel {

/// The conversation about the selected hunk, and whether it can be continued. Thread: interface.
class ConversationPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vantrel::DiffViewModel *diff READ diff WRITE setDiff NOTIFY diffChanged)
    Q_PROPERTY(vantrel::ChatThreadViewModel *chat READ chat NOTIFY chatChanged)
    Q_PROPERTY(bool isChatInputDisabled READ isChatInputDisabled NOTIFY isChatInputDisabledChanged)
    Q_PROPERTY(QStringList questions READ questions NOTIFY questionsChanged)
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
    Q_PROPERTY(QString recoveryLabel READ recoveryLabel NOTIFY messageChanged)
    Q_PROPERTY(QString draft READ draft WRITE setDraft NOTIFY draftChanged)
    Q_PROPERTY(bool canSend READ canSend NOTIFY canSendChanged)

public:
    using QObject::QObject;

    [[nodiscard]] DiffViewModel *diff() const { return m_diff; }
    void setDiff(DiffViewModel *diff);
    [[nodiscard]] ChatThreadViewModel *chat() const { return m_chat; } ///< Null without a hunk.

    /// There is no hunk, or it is being explained, which its conversation begins with.
    [[nodiscard]] bool isChatInputDisabled() const { return m_isChatInputDisabled; }
    [[nodiscard]] bool canSend() const { return m_canSend; } ///< The draft is more than blanks.

    [[nodiscard]] QStringList questions() const; ///< The suggested ones, as they are shown.
    [[nodiscard]] QString message() const;       ///< Of the last failure, or empty.
    [[nodiscard]] QString recoveryLabel() const; ///< The words that lead to its remedy.
    [[nodiscard]] QString draft() const;
    void setDraft(const QString &draft);

    /// Sends the draft, if it can be sent.
    Q_INVOKABLE void send();

    /// Sends the suggested question of this place in the list, in place of the draft.
    Q_INVOKABLE void ask(int question);

Q_SIGNALS:
    void diffChanged();
    void chatChanged();
    void isChatInputDisabledChanged();
    void questionsChanged();
    void messageChanged();
    void draftChanged();
    void canSendChanged();

private:
    void takeChat();
    void update();

    QPointer<DiffViewModel> m_diff{};
    QPointer<ChatThreadViewModel> m_chat{};
    bool m_isChatInputDisabled = true;
    bool m_canSend = false;
};

} // namespace vantrel
