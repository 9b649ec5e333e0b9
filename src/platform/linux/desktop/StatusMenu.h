#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace tarnwick {

/// (ia{sv}av)
struct StatusMenuLayout {
    int id = 0;
    QVariantMap properties;
    QVariantList children; ///< of StatusMenuLayout
};

/// (ia{sv})
struct StatusMenuEntry {
    int id = 0;
    QVariantMap properties;
};

/// (isvu)
struct StatusMenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const StatusMenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusMenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const StatusMenuEntry& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusMenuEntry& entry);
QDBusArgument& operator<<(QDBusArgument& argument, const StatusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusMenuEvent& event);

} // namespace tarnwick

Q_DECLARE_METATYPE(tarnwick::StatusMenuLayout)
Q_DECLARE_METATYPE(tarnwick::StatusMenuEntry)
Q_DECLARE_METATYPE(tarnwick::StatusMenuEvent)

namespace tarnwick {

/// A menu of one entry that does what a click does (com.canonical.dbusmenu), for hosts that show only items with a
/// menu. It never changes. Member names are those of the bus.
class StatusMenu : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    explicit StatusMenu(QObject* parent = nullptr);

    [[nodiscard]] static uint version() { return 3; }
    [[nodiscard]] static QString status() { return QStringLiteral("normal"); }
    [[nodiscard]] static QString textDirection() { return QStringLiteral("ltr"); }
    [[nodiscard]] static QStringList iconThemePath() { return {}; }

public Q_SLOTS:
    uint GetLayout(int parentId, int depth, const QStringList& propertyNames, tarnwick::StatusMenuLayout& layout);
    QList<tarnwick::StatusMenuEntry> GetGroupProperties(const QList<int>& ids, const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& event, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const QList<tarnwick::StatusMenuEvent>& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

Q_SIGNALS:
    Q_SCRIPTABLE void LayoutUpdated(uint revision, int parent);
    void chosen();
};

} // namespace tarnwick
