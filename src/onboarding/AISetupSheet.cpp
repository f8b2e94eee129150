#include "onboarding/AISetupSheet.h"

#include "platform/jobs/RunQueue.h"

#include <utility>

namespace vantrel {

AISetupSheet::AISetupSheet(AISetupPresenter &presenter, AISetupViewModel::Services services,
                           QObject *parent)
    : QObject(parent)
    , m_presenter(presenter)
    , m_services(std::move(services))
{
    connect(&presenter, &AISetupPresenter::isPresentedChanged, this, &AISetupSheet::follow);
    follow();
}

AISetupSheet::~AISetupSheet() = default;

void AISetupSheet::openIfNeeded()
{
    VANTREL_ASSERT_UI_THREAD();
    m_presenter.presentAutomaticallyIfNeeded();
}

void AISetupSheet::open()
{
    VANTREL_ASSERT_UI_THREAD();
    m_presenter.setIsPresented(true);
}

void AISetupSheet::close()
{
    VANTREL_ASSERT_UI_THREAD();
    m_presenter.setIsPresented(false);
}

void AISetupSheet::follow()
{
    if (m_presenter.isPresented() == (m_viewModel != nullptr)) {
        return;
    }
    if (m_presenter.isPresented()) {
        m_viewModel = new AISetupViewModel(m_services, this);
        Q_EMIT viewModelChanged();
        return;
    }
    AISetupViewModel *const former = std::exchange(m_viewModel, nullptr);
    Q_EMIT viewModelChanged();
    // It announces what it has set up, which may show the sheet anew.
    former->close();
    // Bindings of the pages that are going, and the call that led here, may still use it.
    former->deleteLater();
}

} // namespace vantrel
