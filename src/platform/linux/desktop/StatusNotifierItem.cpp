#include "StatusNotifierItem.h"

#include "ShownText.h"
#include "StatusItemIcon.h"
#include "StatusMenu.h"
#include "StatusNotifierAdaptor.h"
#include "X11Session.h"

#include <QCursor>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {
const auto watcherService = u"org.kde.StatusNotifierWatcher"_s;
const auto watcherPath = u"/StatusNotifierWatcher"_s;
const auto itemPath = u"/StatusNotifierItem"_s;

/// Hosts choose the size that fits their panel. These are the usual ones, at scales 1 and 2.
constexpr std::array iconSizes{16, 22, 24, 32, 44, 48};

QStringList desktopNames() {
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
}

bool isGnome() {
    return desktopNames().contains(u"GNOME"_s);
}

/// No host says what its panel looks like. Those of these desktops follow the colour scheme. GNOME's is dark under the
/// light scheme, too, and so are the bars of window managers such as sway and i3, as they come.
bool panelIsDark(const ColorScheme& colors) {
    constexpr std::array followers{"KDE"_L1, "XFCE"_L1, "LXQt"_L1, "MATE"_L1, "X-Cinnamon"_L1};
    const QStringList names = desktopNames();
    return colors.isDark() ||
           std::ranges::none_of(followers, [&names](QLatin1String follower) { return names.contains(follower); });
}
} // namespace

StatusNotifierItem::StatusNotifierItem(const SessionBus& bus, const ColorScheme& colors, QObject* parent)
    : StatusItem(parent), bus_(bus), colors_(colors) {
    registerStatusNotifierTypes();
    makeInterface();
    watcher_.addWatchedService(watcherService);
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) {
                if (newOwner.isEmpty())
                    setHost(false);
                else
                    registerItem();
            });
    connect(&colors_, &ColorScheme::changed, this, &StatusNotifierItem::refreshIcon);
    connect(&bus_, &SessionBus::connected, this, &StatusNotifierItem::joinBus);
    connect(&bus_, &SessionBus::lost, this, [this] { setHost(false); });
    joinBus();
}

void StatusNotifierItem::makeInterface() {
    // GNOME's host shows only items with a menu, and opens it on a click, so there the menu leads to the popover. No
    // other host gets one: some would show it instead of passing the click on. The path /NO_DBUSMENU, which others
    // understand as "no menu", makes one of XFCE's hosts ask for that menu without end.
    if (isGnome()) {
        new StatusNotifierMenuAdaptor(this, bus_);
        menu_ = new StatusMenu(this);
        // The menu says nothing of where it is, and in a Wayland session the pointer's position is not known.
        connect(menu_, &StatusMenu::chosen, this, [this] { Q_EMIT clicked({}); });
    } else {
        new StatusNotifierAdaptor(this, bus_);
    }
}

void StatusNotifierItem::joinBus() {
    QDBusConnection bus = bus_.connection();
    watcher_.setConnection(bus);
    for (const auto& change : {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s})
        bus.connect(watcherService, watcherPath, watcherService, change, this, SLOT(askForHost()));
    if (menu_)
        bus.registerObject(StatusNotifierMenuAdaptor::menu().path(), menu_,
                           QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties |
                               QDBusConnection::ExportScriptableSignals);
    bus.registerObject(itemPath, this);
    registerItem();
}

void StatusNotifierItem::setContent(const StatusItemContent& content) {
    if (content == content_)
        return;
    const bool sameIcon = content.symbolName == content_.symbolName && content.description == content_.description;
    content_ = content;
    const QString text = shownText(content.title).trimmed();
    if (text != text_) {
        text_ = text;
        Q_EMIT textChanged();
    }
    if (!sameIcon)
        refreshIcon();
}

QString StatusNotifierItem::title() const {
    return text_.isEmpty() ? content_.description : text_;
}

StatusNotifierToolTip StatusNotifierItem::toolTip() const {
    return {{}, {}, content_.description, text_.toHtmlEscaped()};
}

void StatusNotifierItem::click(int x, int y) {
    // On a scaled screen hosts on X11 disagree on whether they count in device pixels, so the pointer's position is
    // used. Inside a Wayland session that is not known, but hosts do not count in device pixels there. Plasma's knows
    // where its panel is; those of the wlroots compositors count from the corner of the panel, or of the item.
    if (X11Session::windowManager() == X11Session::WindowManager::wlroots)
        Q_EMIT clicked({});
    else if (qGuiApp->devicePixelRatio() > 1.0 && !X11Session::isInsideWayland())
        Q_EMIT clicked(QCursor::pos());
    else
        Q_EMIT clicked({x, y});
}

void StatusNotifierItem::refreshIcon() {
    icon_.clear();
    for (const int size : iconSizes)
        icon_ << statusNotifierPixmap(
            statusItemIcon(content_.symbolName, size, panelIsDark(colors_) ? QColor(0xf2f2f2) : QColor(0x2b2b2b)));
    Q_EMIT iconChanged();
}

void StatusNotifierItem::registerItem() {
    const QDBusConnection& bus = bus_.connection();
    if (!bus.isConnected()) { // a call would get no answer, not even an error
        QMetaObject::invokeMethod(
            this, [this] { setHost(false); }, Qt::QueuedConnection);
        return;
    }
    QDBusMessage call =
        QDBusMessage::createMethodCall(watcherService, watcherPath, watcherService, u"RegisterStatusNotifierItem"_s);
    call << bus.baseService();
    auto* const reply = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply] {
        reply->deleteLater();
        if (reply->isError())
            setHost(false);
        else
            askForHost();
    });
}

void StatusNotifierItem::askForHost() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(watcherService, watcherPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    call << watcherService << u"IsStatusNotifierHostRegistered"_s;
    auto* const watcher = new QDBusPendingCallWatcher(bus_.connection().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        setHost(!reply.isError() && reply.value().variant().toBool());
    });
}

void StatusNotifierItem::setHost(bool present) {
    if (host_ == present)
        return;
    host_ = present;
    Q_EMIT hostChanged(present);
}

} // namespace tarnwick
