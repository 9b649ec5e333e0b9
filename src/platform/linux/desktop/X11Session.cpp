#include "X11Session.h"

#include <QGuiApplication>
#include <QLibrary>
#include <QString>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include <sys/uio.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

struct Xcb {
    xcb_connection_t* connection = nullptr;
    decltype(&xcb_intern_atom) internAtom = nullptr;
    decltype(&xcb_intern_atom_reply) internAtomReply = nullptr;
    decltype(&xcb_get_selection_owner) selectionOwner = nullptr;
    decltype(&xcb_get_selection_owner_reply) selectionOwnerReply = nullptr;
    decltype(&xcb_get_setup) setup = nullptr;
    decltype(&xcb_setup_roots_iterator) roots = nullptr;
    decltype(&xcb_get_extension_data) extensionData = nullptr;
    decltype(&xcb_send_request) sendRequest = nullptr;
    decltype(&xcb_flush) flush = nullptr;
};

template <typename Function>
bool find(QLibrary& library, const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(library.resolve(name));
    return function != nullptr;
}

/// Null where the display is not X11.
const Xcb* xcb() {
    static const std::unique_ptr<const Xcb> found = []() -> std::unique_ptr<const Xcb> {
        auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
        QLibrary library(u"xcb"_s, 1);
        auto calls = std::make_unique<Xcb>();
        if (!x11 || !find(library, "xcb_intern_atom", calls->internAtom) ||
            !find(library, "xcb_intern_atom_reply", calls->internAtomReply) ||
            !find(library, "xcb_get_selection_owner", calls->selectionOwner) ||
            !find(library, "xcb_get_selection_owner_reply", calls->selectionOwnerReply) ||
            !find(library, "xcb_get_setup", calls->setup) || !find(library, "xcb_setup_roots_iterator", calls->roots) ||
            !find(library, "xcb_get_extension_data", calls->extensionData) ||
            !find(library, "xcb_send_request", calls->sendRequest) || !find(library, "xcb_flush", calls->flush))
            return nullptr;
        calls->connection = x11->connection();
        return calls;
    }();
    return found.get();
}

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

// Of the X Input Extension, version 2: the extension's name, one request and one event.
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
    const Xcb* const x = xcb();
    if (!x)
        return false;
    // The compositing manager of a screen owns this selection.
    constexpr std::string_view name = "_NET_WM_CM_S0";
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(x->internAtomReply(
        x->connection, x->internAtom(x->connection, 1, std::uint16_t{name.size()}, name.data()), nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE)
        return false;
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(
        x->selectionOwnerReply(x->connection, x->selectionOwner(x->connection, atom->atom), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

bool X11Session::watchPresses(bool watch) {
    const Xcb* const x = xcb();
    if (!x)
        return false;
    const xcb_query_extension_reply_t* const input = x->extensionData(x->connection, &inputExtension);
    if (!input || !input->present)
        return false;
    SelectEvents request;
    request.window = x->roots(x->setup(x->connection)).data->root;
    request.mask = watch ? 1U << rawButtonPress : 0U;
    // libxcb writes into the two vectors before the first.
    std::array<iovec, 3> parts{};
    parts[2] = {&request, sizeof request};
    const xcb_protocol_request_t protocol{1, &inputExtension, selectEventsRequest, 1};
    x->sendRequest(x->connection, 0, &parts[2], &protocol);
    x->flush(x->connection);
    return true;
}

bool X11Session::isWatchedPress(const QByteArray& eventType, const void* event) {
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* const raw = static_cast<const RawEvent*>(event);
    if ((raw->responseType & 0x7f) != XCB_GE_GENERIC || raw->eventType != rawButtonPress)
        return false;
    const Xcb* const x = xcb();
    return x && x->extensionData(x->connection, &inputExtension)->major_opcode == raw->extension &&
           (raw->detail == XCB_BUTTON_INDEX_1 || raw->detail == XCB_BUTTON_INDEX_3);
}

} // namespace tarnwick
