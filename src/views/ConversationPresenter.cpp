#include "views/ConversationPresenter.h"

#include "ai/AIServiceError.h"
#include "views/ShownText.h"

#include <utility>

namespace vantrel {

void ConversationPresenter::setDiff(DiffViewModel *diff)
{
    if (diff == m_diff) {
        return;
    }
    if (m_diff) {
        m_diff->disconnect(this);
    }
    m_diff = diff;
    if (diff != nullptr) {
        connect(diff, &DiffViewModel::hunksChanged, this, &ConversationPresenter::takeChat);
        connect(diff, &DiffViewModel::selectedHunkIndexChanged, this,
                &ConversationPresenter::takeChat);
        connect(diff, &DiffViewModel::explanationChanged, this, &ConversationPresenter::update);
    }
    takeChat();
    Q_EMIT diffChanged();
}

QStringList ConversationPresenter::questions() const
{
    QStringList shown;
    if (m_chat) {
        for (const QString &question : m_chat->suggestedQuestions()) {
            shown.append(shownText(question));
        }
    }
    return shown;
}

QString ConversationPresenter::message() const
{
    return m_chat ? m_chat->errorMessage() : QString();
}

QString ConversationPresenter::recoveryLabel() const
{
    return vantrel::recoveryLabel(message()).value_or(QString());
}

QString ConversationPresenter::draft() const
{
    return m_chat ? m_chat->draft() : QString();
}

void ConversationPresenter::setDraft(const QString &draft)
{
    if (m_chat) {
        m_chat->setDraft(draft);
    }
}

void ConversationPresenter::send()
{
    if (m_canSend) {
        m_chat->send();
    }
}

void ConversationPresenter::ask(int question)
{
    if (!m_isChatInputDisabled && question >= 0 && question < m_chat->suggestedQuestions().size()) {
        m_chat->setDraft(m_chat->suggestedQuestions().at(question));
        m_chat->send();
    }
}

void ConversationPresenter::takeChat()
{
    ChatThreadViewModel *const chat =
        m_diff ? m_diff->chatViewModel(m_diff->selectedHunkIndex()) : nullptr;
    if (chat != m_chat) {
        if (m_chat) {
            m_chat->disconnect(this);
        }
        m_chat = chat;
        if (chat != nullptr) {
            connect(chat, &ChatThreadViewModel::suggestedQuestionsChanged, this,
                    &ConversationPresenter::questionsChanged);
            connect(chat, &ChatThreadViewModel::errorMessageChanged, this,
                    &ConversationPresenter::messageChanged);
            connect(chat, &ChatThreadViewModel::draftChanged, this,
                    &ConversationPresenter::draftChanged);
            connect(chat, &ChatThreadViewModel::draftChanged, this, &ConversationPresenter::update);
        }
        Q_EMIT chatChanged();
        Q_EMIT questionsChanged();
        Q_EMIT messageChanged();
        Q_EMIT draftChanged();
    }
    update();
}

void ConversationPresenter::update()
{
    const Hunk *const hunk = m_diff ? m_diff->selectedHunk() : nullptr;
    const bool isDisabled = !m_chat || hunk == nullptr || hunk->explanationState.isLoading();
    const bool canSend = !isDisabled && !m_chat->draft().trimmed().isEmpty();
    if (std::exchange(m_isChatInputDisabled, isDisabled) != isDisabled) {
        Q_EMIT isChatInputDisabledChanged();
    }
    if (std::exchange(m_canSend, canSend) != canSend) {
        Q_EMIT canSendChanged();
    }
}

} // namespace vantrel
