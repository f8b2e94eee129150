#pragma once

#include "views/DenyingNetworkAccess.h"

#include <QQmlApplicationEngine>

class QQuickWindow;

namespace vantrel {

class RootViewModel;
class SystemAppearance;

/// The application's window: the interface over its view models. Thread: interface.
class MainWindow final
{
public:
    /// Both must outlive the window. With `reducesMotion` nothing in it takes time.
    MainWindow(RootViewModel &viewModel, SystemAppearance &appearance, bool reducesMotion = false);
    ~MainWindow();

    /// Null when the interface could not be made.
    [[nodiscard]] QQuickWindow *window() const { return m_window; }

private:
    DenyingNetworkAccess m_networkAccess{};
    QQmlApplicationEngine m_engine{};
    QQuickWindow *m_window = nullptr; ///< Owned by the engine.
};

} // namespace vantrel
