#pragma once

#include "onboarding/AISetupPresenter.h"
#include "onboarding/AISetupViewModel.h"

#include <QObject>

#include <memory>

namespace vantrel {

/// The setup sheet over the main window: its pages are made anew each time that it is shown, and
/// gone when it is not. Thread: interface.
class AISetupSheet final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(vantrel::AISetupViewModel *viewModel READ viewModel NOTIFY viewModelChanged)

public:
    /// The presenter, and the services of the pages, must outlive the sheet.
    AISetupSheet(AISetupPresenter &presenter, AISetupViewModel::Services services,
                 QObject *parent = nullptr);
    ~AISetupSheet() override;

    /// The pages, or null while the sheet is not shown.
    [[nodiscard]] AISetupViewModel *viewModel() const { return m_viewModel; }

    /// For the first time that the main window is shown: opens the sheet if it is needed.
    Q_INVOKABLE void openIfNeeded();
    Q_INVOKABLE void open();
    Q_INVOKABLE void close();

Q_SIGNALS:
    void viewModelChanged();

private:
    void follow();

    AISetupPresenter &m_presenter;
    AISetupViewModel::Services m_services;
    AISetupViewModel *m_viewModel = nullptr; ///< A child of this object.
};

} // namespace vantrel
