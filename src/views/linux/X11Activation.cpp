#include "views/linux/X11Activation.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <xcb/xcb.h>

namespace vantrel {

namespace {

using X11Application = QNativeInterface::QX11Application;

xcb_atom_t atomNamed(xcb_connection_t *connection, const QByteArray &name)
{
    const auto asked = xcb_intern_atom(connection, 0, std::uint16_t(name.size()), name.constData());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(connection, asked, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

/// Sends a message about `window` to those who watch the root window with this mask.
void sendToRoot(xcb_connection_t *connection, std::uint32_t mask,
                const xcb_client_message_event_t &message)
{
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_send_event(connection, 0, root, mask, reinterpret_cast<const char *>(&message));
}

xcb_client_message_event_t messageAbout(xcb_window_t window, xcb_atom_t type, std::uint8_t format)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = format;
    message.window = window;
    message.type = type;
    return message;
}

/// The X server's time of the click: the identifier ends with "_TIME" and a number.
std::optional<std::uint32_t> timeIn(const QByteArray &startupId)
{
    const QByteArray mark = "_TIME";
    const qsizetype begin = startupId.lastIndexOf(mark);
    bool isNumber = false;
    const uint time = begin < 0 ? 0 : startupId.sliced(begin + mark.size()).toUInt(&isNumber);
    return isNumber ? std::optional(time) : std::nullopt;
}

/// The X server's time. It is told with events only, and those of the application's own connection
/// are Qt's.
std::uint32_t currentTime()
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> owned(
        xcb_connect(nullptr, nullptr), &xcb_disconnect);
    xcb_connection_t *const connection = owned.get();
    if (xcb_connection_has_error(connection) != 0) {
        return XCB_CURRENT_TIME;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const xcb_window_t window = xcb_generate_id(connection);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    xcb_change_property(connection, XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                        8, 0, nullptr);
    xcb_flush(connection);
    // The only event that the window can have.
    const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event(
        xcb_wait_for_event(connection), &std::free);
    return event && event->response_type == XCB_PROPERTY_NOTIFY
               ? reinterpret_cast<xcb_property_notify_event_t *>(event.get())->time
               : std::uint32_t(XCB_CURRENT_TIME);
}

void askForFront(xcb_connection_t *connection, xcb_window_t window, std::uint32_t time)
{
    constexpr std::uint32_t fromApplication = 1;
    auto message = messageAbout(window, atomNamed(connection, "_NET_ACTIVE_WINDOW"), 32);
    message.data.data32[0] = fromApplication;
    message.data.data32[1] = time;
    sendToRoot(connection,
               XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, message);
}

/// Texts between launchers and the launched go in pieces of 20 bytes, with a null at the end.
void announceEnd(xcb_connection_t *connection, xcb_window_t window, const QByteArray &startupId)
{
    constexpr qsizetype pieceSize = 20;
    QByteArray quoted = startupId;
    quoted.replace('\\', "\\\\").replace('"', "\\\"");
    QByteArray text = "remove: ID=\"" + quoted + '"' + '\0';
    auto message = messageAbout(window, atomNamed(connection, "_NET_STARTUP_INFO_BEGIN"), 8);
    const xcb_atom_t next = atomNamed(connection, "_NET_STARTUP_INFO");
    for (; !text.isEmpty(); text.remove(0, pieceSize)) {
        const QByteArray piece =
            text.first(std::min(pieceSize, text.size())).leftJustified(pieceSize, '\0');
        std::copy(piece.cbegin(), piece.cend(), message.data.data8);
        sendToRoot(connection, XCB_EVENT_MASK_PROPERTY_CHANGE, message);
        message.type = next;
    }
}

} // namespace

void activateX11Window(const QWindow &window, const QByteArray &startupId)
{
    const auto *const x11 = qGuiApp->nativeInterface<X11Application>();
    if (x11 == nullptr) {
        return;
    }
    xcb_connection_t *const connection = x11->connection();
    const auto id = xcb_window_t(window.winId());
    const auto time = timeIn(startupId);
    askForFront(connection, id, time ? *time : currentTime());
    if (!startupId.isEmpty()) {
        announceEnd(connection, id, startupId);
    }
    xcb_flush(connection);
}

} // namespace vantrel
