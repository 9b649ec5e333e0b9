#include "X11Session.h"

#include "linux/Libxcb.h"

#include <QGuiApplication>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include <sys/uio.h>

namespace tarnwick {

namespace {

/// Null where the display is not X11.
xcb_connection_t* connection() {
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

// From the X Input Extension, version 2: its name, one request and one event.
xcb_extension_t inputExtension{"XInputExtension", 0};
constexpr std::uint8_t selectEventsRequest = 46;
constexpr std::uint16_t allMasterDevices = 1;
constexpr std::uint16_t rawButtonPress = 15;

struct SelectEvents {
    std::uint8_t majorOpcode = 0;
    std::uint8_t minorOpcode = 0;
    std::uint16_t length = 0;
    std::uint32_t window = 0;
    std::uint16_t maskCount = 1;
    std::uint16_t padding = 0;
    std::uint16_t device = allMasterDevices;
    std::uint16_t maskWords = 1;
    std::uint32_t mask = 0;
};
static_assert(sizeof(SelectEvents) == 20);

struct RawEvent {
    std::uint8_t responseType;
    std::uint8_t extension;
    std::uint16_t sequence;
    std::uint32_t length;
    std::uint16_t eventType;
    std::uint16_t device;
    std::uint32_t time;
    std::uint32_t detail; ///< the button
};

} // namespace

bool X11Session::isCompositing() {
    const Libxcb* const x = Libxcb::find();
    xcb_connection_t* const display = connection();
    if (!x || !display)
        return false;
    // The compositing manager of a screen owns this selection.
    constexpr std::string_view name = "_NET_WM_CM_S0";
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(
        x->internAtomReply(display, x->internAtom(display, 1, std::uint16_t{name.size()}, name.data()), nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE)
        return false;
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(
        x->selectionOwnerReply(display, x->selectionOwner(display, atom->atom), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

bool X11Session::watchPresses(bool watch) {
    const Libxcb* const x = Libxcb::find();
    xcb_connection_t* const display = connection();
    if (!x || !display)
        return false;
    const xcb_query_extension_reply_t* const input = x->extensionData(display, &inputExtension);
    if (!input || !input->present)
        return false;
    SelectEvents request;
    request.window = x->roots(x->setup(display)).data->root;
    request.mask = watch ? 1U << rawButtonPress : 0U;
    // libxcb writes into the two vectors in front of the one that it is given.
    std::array<iovec, 3> parts{};
    parts[2] = {&request, sizeof request};
    const xcb_protocol_request_t protocol{1, &inputExtension, selectEventsRequest, 1};
    x->sendRequest(display, 0, &parts[2], &protocol);
    x->flush(display);
    return true;
}

bool X11Session::isWatchedPress(const QByteArray& eventType, const void* event) {
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* const raw = static_cast<const RawEvent*>(event);
    if ((raw->responseType & 0x7f) != XCB_GE_GENERIC || raw->eventType != rawButtonPress)
        return false;
    const Libxcb* const x = Libxcb::find();
    xcb_connection_t* const display = connection();
    return x && display && x->extensionData(display, &inputExtension)->major_opcode == raw->extension &&
           (raw->detail == XCB_BUTTON_INDEX_1 || raw->detail == XCB_BUTTON_INDEX_3);
}

} // namespace tarnwick
