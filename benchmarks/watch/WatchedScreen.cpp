#include "watch/WatchedScreen.h"

#include <cstdlib>
#include <poll.h>
#include <stdexcept>
#include <xcb/damage.h>
#include <xcb/xtest.h>

namespace vantrel::bench {

namespace {

/// Letters and signs are at least five times as high.
constexpr int lineStep = 2;

constexpr std::uint8_t leftButton = 1;

} // namespace

WatchedScreen::WatchedScreen(const std::string &framebufferPath)
    : m_framebuffer(framebufferPath)
    , m_connection(xcb_connect(nullptr, nullptr))
{
    const xcb_query_extension_reply_t *const damage =
        xcb_connection_has_error(m_connection) != 0
            ? nullptr
            : xcb_get_extension_data(m_connection, &xcb_damage_id);
    if (damage == nullptr || damage->present == 0) {
        xcb_disconnect(m_connection);
        throw std::runtime_error("DISPLAY names no X server that tells what was drawn");
    }
    const auto version =
        xcb_damage_query_version(m_connection, XCB_DAMAGE_MAJOR_VERSION, XCB_DAMAGE_MINOR_VERSION);
    std::free(xcb_damage_query_version_reply(m_connection, version, nullptr));
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    m_damage = xcb_generate_id(m_connection);
    xcb_damage_create(m_connection, m_damage, m_root, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    xcb_flush(m_connection);
}

WatchedScreen::~WatchedScreen()
{
    xcb_disconnect(m_connection);
}

Sight WatchedScreen::look() const
{
    Sight sight;
    for (int y = 0; y < m_framebuffer.height(); y += lineStep) {
        sight.add(y, m_framebuffer.line(y));
    }
    return sight;
}

void WatchedScreen::awaitDrawing(std::chrono::milliseconds limit)
{
    pollfd descriptor{xcb_get_file_descriptor(m_connection), POLLIN, 0};
    xcb_generic_event_t *event = xcb_poll_for_event(m_connection);
    if (event == nullptr) {
        ::poll(&descriptor, 1, int(limit.count()));
        event = xcb_poll_for_event(m_connection);
    }
    while (event != nullptr) {
        std::free(event);
        event = xcb_poll_for_event(m_connection);
    }
    // What is drawn from here on is told again.
    xcb_damage_subtract(m_connection, m_damage, XCB_NONE, XCB_NONE);
    xcb_flush(m_connection);
}

void WatchedScreen::click(int x, int y)
{
    xcb_test_fake_input(m_connection, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, m_root,
                        std::int16_t(x), std::int16_t(y), 0);
    for (const int type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE}) {
        xcb_test_fake_input(m_connection, std::uint8_t(type), leftButton, XCB_CURRENT_TIME, m_root,
                            0, 0, 0);
    }
    xcb_flush(m_connection);
}

} // namespace vantrel::bench
