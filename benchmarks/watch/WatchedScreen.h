#pragma once

#include "watch/Framebuffer.h"
#include "watch/Stripes.h"

#include <chrono>
#include <string>
#include <xcb/xcb.h>

namespace vantrel::bench {

/// The screen of a virtual X server: what is on it, and a pointer to click with.
class WatchedScreen
{
public:
    /// Of the server that DISPLAY names, whose picture lies in `framebufferPath`. Throws
    /// `std::runtime_error` when there is none.
    explicit WatchedScreen(const std::string &framebufferPath);
    WatchedScreen(const WatchedScreen &) = delete;
    WatchedScreen &operator=(const WatchedScreen &) = delete;
    ~WatchedScreen();

    /// What is on the screen now.
    [[nodiscard]] Sight look() const;

    /// Returns when something was drawn since the last call, or after `limit`.
    void awaitDrawing(std::chrono::milliseconds limit);

    void click(int x, int y);

private:
    Framebuffer m_framebuffer;
    xcb_connection_t *m_connection = nullptr;
    xcb_window_t m_root = 0;
    std::uint32_t m_damage = 0;
};

} // namespace vantrel::bench
