#pragma once

#include "StatusItemIcon.h"
#include "StatusNotifierItem.h"

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>

namespace tarnwick {

/// The interface org.kde.StatusNotifierItem of a StatusNotifierItem, which owns it. Member names are those of the bus.
class StatusNotifierAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(QList<tarnwick::StatusNotifierPixmap> IconPixmap READ iconPixmap)
    Q_PROPERTY(QString IconAccessibleDesc READ iconAccessibleDescription)
    Q_PROPERTY(tarnwick::StatusNotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QString XAyatanaLabel READ label)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide)

public:
    /// `bus` must outlive it.
    StatusNotifierAdaptor(StatusNotifierItem* item, const SessionBus& bus);

    [[nodiscard]] static QString category() { return QStringLiteral("SystemServices"); }
    [[nodiscard]] static QString id() { return QStringLiteral("tarnwick"); }
    [[nodiscard]] QString title() const { return item_.title(); }
    [[nodiscard]] static QString status() { return QStringLiteral("Active"); }
    [[nodiscard]] static int windowId() { return 0; }
    /// Empty: a name that the host's icon theme lacks would show nothing at all.
    [[nodiscard]] static QString iconName() { return {}; }
    [[nodiscard]] QList<StatusNotifierPixmap> iconPixmap() const { return item_.icon(); }
    [[nodiscard]] QString iconAccessibleDescription() const { return item_.description(); }
    [[nodiscard]] StatusNotifierToolTip toolTip() const { return item_.toolTip(); }
    [[nodiscard]] static bool itemIsMenu() { return false; }
    [[nodiscard]] QString label() const { return item_.text(); }
    [[nodiscard]] QString labelGuide() const { return statusTextGuide(item_.text()); }

public Q_SLOTS:
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString& orientation);
    /// Lets the window that the following click opens take the focus on Wayland. On X11 the call is unknown: hosts
    /// would wait for a window that uses the token, with a busy pointer.
    void ProvideXdgActivationToken(const QString& token, const QDBusMessage& call);

Q_SIGNALS:
    void NewTitle();
    void NewIcon();
    void NewToolTip();
    void NewStatus(const QString& status);
    void XAyatanaNewLabel(const QString& label, const QString& guide);

private:
    void sendText();

    StatusNotifierItem& item_;
    const SessionBus& bus_;
};

/// The same with a menu. The property alone makes hosts believe that there is one; without it they pass every click on.
class StatusNotifierMenuAdaptor : public StatusNotifierAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QDBusObjectPath Menu READ menu)

public:
    using StatusNotifierAdaptor::StatusNotifierAdaptor;

    [[nodiscard]] static QDBusObjectPath menu() { return QDBusObjectPath(QStringLiteral("/StatusMenu")); }
};

} // namespace tarnwick
