#include "StartupMessages.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <xcb/xcb.h>

namespace vantrel::test {

StartupMessages::StartupMessages()
    : m_connection(xcb_connect(nullptr, nullptr))
    , m_activeWindow(atom("_NET_ACTIVE_WINDOW"))
    , m_begin(atom("_NET_STARTUP_INFO_BEGIN"))
    , m_next(atom("_NET_STARTUP_INFO"))
{
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    const std::uint32_t events =
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    const auto asked =
        xcb_change_window_attributes_checked(m_connection, root, XCB_CW_EVENT_MASK, &events);
    EXPECT_EQ(xcb_request_check(m_connection, asked), nullptr);
}

StartupMessages::~StartupMessages()
{
    xcb_disconnect(m_connection);
}

void StartupMessages::read()
{
    while (xcb_generic_event_t *const event = xcb_poll_for_event(m_connection)) {
        const auto &message = *reinterpret_cast<xcb_client_message_event_t *>(event);
        const bool isMessage = (event->response_type & 0x7f) == XCB_CLIENT_MESSAGE;
        if (isMessage && message.type == m_activeWindow) {
            m_times.append(message.data.data32[1]);
        } else if (isMessage && (message.type == m_begin || message.type == m_next)) {
            m_text += QByteArray(reinterpret_cast<const char *>(message.data.data8), 20);
            if (m_text.contains('\0')) {
                m_texts.append(QByteArray(m_text.constData()));
                m_text.clear();
            }
        }
        std::free(event);
    }
}

std::uint32_t StartupMessages::atom(const QByteArray &name) const
{
    const auto asked =
        xcb_intern_atom(m_connection, 0, std::uint16_t(name.size()), name.constData());
    xcb_intern_atom_reply_t *const reply = xcb_intern_atom_reply(m_connection, asked, nullptr);
    const std::uint32_t atom = reply->atom;
    std::free(reply);
    return atom;
}

} // namespace vantrel::test
