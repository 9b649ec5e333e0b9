#include "X11Session.h"

#include "PlasmaPanels.h"
#include "SwayWorkspaces.h"
#include "linux/Libxcb.h"
#include "linux/SessionBus.h"

#include <QGuiApplication>
#include <QList>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

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

/// The connection to an X11 display with the functions to use it; false elsewhere, and once it has broken.
struct Display {
    const Libxcb* const x = Libxcb::find();
    xcb_connection_t* const connection = tarnwick::connection();

    /// A connection that broke has no roots and no extensions; Qt has not noticed yet.
    explicit operator bool() const { return x && connection && x->connectionHasError(connection) == 0; }
    [[nodiscard]] xcb_window_t root() const { return x->roots(x->setup(connection)).data->root; }
    /// XCB_ATOM_NONE where nobody has used the name.
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const {
        const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(x->internAtomReply(
            connection, x->internAtom(connection, 1, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
    /// The start of a property's value, in the byte order of this computer; empty where there is none.
    [[nodiscard]] QByteArray property(xcb_window_t window, std::string_view name) const {
        constexpr std::uint32_t longest = 1024; // in units of four bytes
        const std::unique_ptr<xcb_get_property_reply_t, Free> reply(x->propertyReply(
            connection, x->property(connection, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, longest),
            nullptr));
        return reply ? QByteArray(static_cast<const char*>(x->propertyValue(reply.get())),
                                  x->propertyValueLength(reply.get()))
                     : QByteArray();
    }
    /// The same as 32-bit numbers.
    [[nodiscard]] QList<std::uint32_t> numbers(xcb_window_t window, std::string_view name) const {
        const QByteArray bytes = property(window, name);
        constexpr qsizetype numberBytes = sizeof(std::uint32_t);
        QList<std::uint32_t> numbers(bytes.size() / numberBytes);
        std::copy_n(bytes.cbegin(), numbers.size() * numberBytes, reinterpret_cast<char*>(numbers.data()));
        return numbers;
    }
};

QList<QRect> rectangles(const QList<std::uint32_t>& numbers) {
    QList<QRect> rectangles;
    for (qsizetype i = 0; i + 3 < numbers.size(); i += 4)
        rectangles.push_back(QRect(static_cast<int>(numbers[i]), static_cast<int>(numbers[i + 1]),
                                   static_cast<int>(numbers[i + 2]), static_cast<int>(numbers[i + 3])));
    return rectangles;
}

/// Of each screen, where the window manager says that.
QList<WorkArea> workAreas() {
    QList<WorkArea> areas = swayWorkspaces();
    const Display display;
    if (!areas.isEmpty() || !display)
        return areas;
    for (const QRect& place : rectangles(display.numbers(display.root(), "_GTK_WORKAREAS_D0")))
        areas.push_back({place});
    return areas;
}

/// Qt scales the size of a screen, and leaves its corner where it is.
QRect inPixelsOf(const QScreen& screen, const QRect& area) {
    const QPoint corner = screen.geometry().topLeft();
    const double scale = screen.devicePixelRatio();
    return {corner + (area.topLeft() - corner) / scale, area.size() / scale};
}

QRect nativeGeometry(const QScreen& screen) {
    return {screen.geometry().topLeft(), screen.size() * screen.devicePixelRatio()};
}

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

X11Session::WindowManager X11Session::windowManager() {
    const Display display;
    if (!display)
        return WindowManager::none;
    // The window that this property names carries the window manager's name.
    const QList<std::uint32_t> check = display.numbers(display.root(), "_NET_SUPPORTING_WM_CHECK");
    const QByteArray name = check.isEmpty() ? QByteArray() : display.property(check.first(), "_NET_WM_NAME");
    if (name == "wlroots wm")
        return WindowManager::wlroots;
    if (name == "KWin")
        return WindowManager::kwin;
    return name == "GNOME Shell" && isInsideWayland() ? WindowManager::gnome : WindowManager::other;
}

bool X11Session::isInsideWayland() {
    return connection() && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

QRect X11Session::availableGeometry(const QScreen& screen) {
    for (const WorkArea& area : workAreas())
        if (const QRect scaled = inPixelsOf(screen, area.place); screen.geometry().contains(scaled))
            return scaled;
    // One rectangle for all screens, which Qt uses where there is one screen. Of several it says something of those
    // that it touches.
    const Display display;
    if (!display)
        return screen.availableGeometry();
    const QRect common = rectangles(display.numbers(display.root(), "_NET_WORKAREA")).value(0) & nativeGeometry(screen);
    const QRect free = common.isEmpty() ? screen.availableGeometry() : inPixelsOf(screen, common);
    return windowManager() == WindowManager::kwin ? free & besidePlasmaPanels(screen, SessionBus::shared().connection())
                                                  : free;
}

QScreen* X11Session::currentScreen() {
    for (const WorkArea& area : workAreas())
        for (QScreen* const screen : QGuiApplication::screens())
            if (area.isFocused && screen->geometry().contains(inPixelsOf(*screen, area.place)))
                return screen;
    return QGuiApplication::primaryScreen();
}

void X11Session::skipTaskBars(QWindow& window) {
    const Display display;
    if (!display)
        return;
    window.create();
    std::vector<xcb_atom_t> states;
    for (const char* state :
         {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER", "_KDE_NET_WM_STATE_SKIP_SWITCHER"})
        if (const xcb_atom_t atom = display.atom(state); atom != XCB_ATOM_NONE)
            states.push_back(atom);
    if (states.empty())
        return;
    // Qt adds its own states to those that it finds when it shows the window.
    display.x->changeProperty(display.connection, XCB_PROP_MODE_APPEND, static_cast<xcb_window_t>(window.winId()),
                              display.atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32,
                              static_cast<std::uint32_t>(states.size()), states.data());
}

void X11Session::clear(QWindow& window) {
    const Display display;
    if (!display)
        return;
    window.create();
    constexpr std::uint32_t clearPixel = 0;
    display.x->changeWindowAttributes(display.connection, static_cast<xcb_window_t>(window.winId()), XCB_CW_BACK_PIXEL,
                                      &clearPixel);
}

bool X11Session::isCompositing() {
    const Display display;
    if (!display)
        return false;
    // The compositing manager of a screen owns this selection.
    const xcb_atom_t atom = display.atom("_NET_WM_CM_S0");
    if (atom == XCB_ATOM_NONE)
        return false;
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(display.x->selectionOwnerReply(
        display.connection, display.x->selectionOwner(display.connection, atom), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

bool X11Session::watchPresses(bool watch) {
    const Display display;
    if (!display)
        return false;
    const xcb_query_extension_reply_t* const input = display.x->extensionData(display.connection, &inputExtension);
    if (!input || !input->present)
        return false;
    SelectEvents request;
    request.window = display.root();
    request.mask = watch ? 1U << rawButtonPress : 0U;
    // libxcb writes into the two vectors in front of the one that it is given.
    std::array<iovec, 3> parts{};
    parts[2] = {&request, sizeof request};
    const xcb_protocol_request_t protocol{1, &inputExtension, selectEventsRequest, 1};
    display.x->sendRequest(display.connection, 0, &parts[2], &protocol);
    display.x->flush(display.connection);
    return true;
}

bool X11Session::isWatchedPress(const QByteArray& eventType, const void* event) {
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* const raw = static_cast<const RawEvent*>(event);
    if ((raw->responseType & 0x7f) != XCB_GE_GENERIC || raw->eventType != rawButtonPress)
        return false;
    const Display display;
    return display && display.x->extensionData(display.connection, &inputExtension)->major_opcode == raw->extension &&
           (raw->detail == XCB_BUTTON_INDEX_1 || raw->detail == XCB_BUTTON_INDEX_3);
}

} // namespace tarnwick
