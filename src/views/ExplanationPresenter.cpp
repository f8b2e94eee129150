#include "views/ExplanationPresenter.h"

#include "ai/AIServiceError.h"
#include "views/ShownText.h"

namespace vantrel {

void ExplanationPresenter::setDiff(DiffViewModel *diff)
{
    if (diff == m_diff) {
        return;
    }
    if (m_diff) {
        m_diff->disconnect(this);
    }
    m_diff = diff;
    if (diff != nullptr) {
        connect(diff, &DiffViewModel::hunksChanged, this, &ExplanationPresenter::changed);
        connect(diff, &DiffViewModel::selectedHunkIndexChanged, this,
                &ExplanationPresenter::changed);
        connect(diff, &DiffViewModel::explanationChanged, this, [this](int hunkIndex) {
            if (hunkIndex == m_diff->selectedHunkIndex()) {
                announce();
            }
        });
    }
    Q_EMIT diffChanged();
    Q_EMIT changed();
}

void ExplanationPresenter::announce()
{
    const Hunk *const selected = hunk();
    const bool isGrowing = selected != nullptr && selected->explanationState.isLoading() &&
                           m_diff->streamingExplanationView(m_diff->selectedHunkIndex());
    if (isGrowing) {
        m_streamed.changed();
        return;
    }
    m_streamed.drop();
    Q_EMIT changed();
}

ExplanationPresenter::State ExplanationPresenter::state() const
{
    const Hunk *const selected = hunk();
    if (selected == nullptr || selected->explanationState.isIdle()) {
        return State::None;
    }
    if (selected->explanationState.isLoading()) {
        const auto streamed = m_diff->streamingExplanationView(m_diff->selectedHunkIndex());
        return streamed.value_or(QStringView()).isEmpty() ? State::Reading : State::Streaming;
    }
    return selected->explanationState.isLoaded() ? State::Loaded : State::Failed;
}

QString ExplanationPresenter::tag() const
{
    const Hunk *const selected = hunk();
    const auto *const explanation =
        selected == nullptr ? nullptr : selected->explanationState.value();
    return explanation == nullptr ? QString() : shownText(explanation->tag);
}

QString ExplanationPresenter::prose() const
{
    const Hunk *const selected = hunk();
    if (selected == nullptr) {
        return {};
    }
    if (const auto *const explanation = selected->explanationState.value()) {
        return shownText(explanation->explanation);
    }
    const auto streamed = m_diff->streamingExplanationView(m_diff->selectedHunkIndex());
    return streamed ? shownText(*streamed) : QString();
}

QStringList ExplanationPresenter::points() const
{
    const Hunk *const selected = hunk();
    const auto *const explanation =
        selected == nullptr ? nullptr : selected->explanationState.value();
    QStringList shown;
    if (explanation != nullptr) {
        for (const QString &point : explanation->points) {
            shown.append(shownText(point));
        }
    }
    return shown;
}

QString ExplanationPresenter::message() const
{
    const Hunk *const selected = hunk();
    const QString *const failure =
        selected == nullptr ? nullptr : selected->explanationState.message();
    return failure == nullptr ? QString() : *failure;
}

QString ExplanationPresenter::recoveryLabel() const
{
    return vantrel::recoveryLabel(message()).value_or(QString());
}

const Hunk *ExplanationPresenter::hunk() const
{
    return m_diff ? m_diff->selectedHunk() : nullptr;
}

} // namespace vantrel
