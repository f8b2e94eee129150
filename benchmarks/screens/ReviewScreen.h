#pragma once

#include "ScreenServices.h"
#include "ai/config/AppearanceController.h"
#include "ai/config/SettingsStore.h"
#include "app/RootViewModel.h"
#include "screens/FrameMeter.h"
#include "views/MainWindow.h"
#include "views/SystemAppearance.h"

#include <functional>

namespace vantrel {
class CodePanesItem;
}

namespace vantrel::bench {

/// The application's window with a file open in it, over services that say what they are told.
class ReviewScreen
{
public:
    enum class Motion { full, reduced };

    /// Returns when the file is drawn and the window takes keys.
    ReviewScreen(const MeteredApplication &application, const FileChange &file, Motion motion);
    ReviewScreen(const ReviewScreen &) = delete;
    ReviewScreen &operator=(const ReviewScreen &) = delete;
    ~ReviewScreen();

    [[nodiscard]] FrameMeter &meter() { return *m_meter; }
    [[nodiscard]] DiffViewModel &diff() { return *m_root->diff(); }

    /// Scrolls by a page, or to the top at the end. Throws `std::runtime_error` when nothing moves.
    void pressPageDown();

    /// Runs the event loop until a further frame is drawn.
    void awaitFrame();

    /// The explanation of the hunk that is selected at first, once it is asked for.
    [[nodiscard]] test::ExplanationChannel &explanation();

    /// Asks about the selected hunk, which must be explained, and gives the answer's source.
    [[nodiscard]] Channel<QString, AIFailure> &ask(const QString &question);

    static void runUntil(const std::function<bool()> &isDone);

private:
    test::ScreenServices m_services{};
    SettingsStore m_settings{m_services.defaults};
    AppearanceController m_appearanceController{m_settings};
    SystemAppearance m_appearance{m_appearanceController};
    std::unique_ptr<RootViewModel> m_root{};
    std::unique_ptr<MainWindow> m_mainWindow{};
    std::unique_ptr<FrameMeter> m_meter{};
    CodePanesItem *m_panes = nullptr;
};

} // namespace vantrel::bench
