#include "StatusMenu.h"

#include <QDBusMetaType>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {
constexpr int rootId = 0;
constexpr int openId = 1;
constexpr uint revision = 1;

QVariantMap propertiesOf(int id) {
    if (id == rootId)
        return {{u"children-display"_s, u"submenu"_s}};
    if (id == openId)
        return {{u"label"_s, u"Open Tarnwick"_s}};
    return {};
}
} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const StatusMenuLayout& layout) {
    argument.beginStructure();
    argument << layout.id << layout.properties << layout.children;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusMenuLayout& layout) {
    argument.beginStructure();
    argument >> layout.id >> layout.properties >> layout.children;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusMenuEntry& entry) {
    argument.beginStructure();
    argument << entry.id << entry.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusMenuEntry& entry) {
    argument.beginStructure();
    argument >> entry.id >> entry.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusMenuEvent& event) {
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusMenuEvent& event) {
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

StatusMenu::StatusMenu(QObject* parent) : QObject(parent) {
    qDBusRegisterMetaType<StatusMenuLayout>();
    qDBusRegisterMetaType<StatusMenuEntry>();
    qDBusRegisterMetaType<QList<StatusMenuEntry>>();
    qDBusRegisterMetaType<StatusMenuEvent>();
    qDBusRegisterMetaType<QList<StatusMenuEvent>>();
}

uint StatusMenu::GetLayout(int parentId, int depth, const QStringList& /*propertyNames*/, StatusMenuLayout& layout) {
    layout = {parentId, propertiesOf(parentId), {}};
    if (parentId == rootId && depth != 0)
        layout.children << QVariant::fromValue(StatusMenuLayout{openId, propertiesOf(openId), {}});
    return revision;
}

QList<StatusMenuEntry> StatusMenu::GetGroupProperties(const QList<int>& ids, const QStringList& /*propertyNames*/) {
    QList<StatusMenuEntry> entries;
    for (const int id : ids.isEmpty() ? QList<int>{rootId, openId} : ids)
        entries << StatusMenuEntry{id, propertiesOf(id)};
    return entries;
}

QDBusVariant StatusMenu::GetProperty(int id, const QString& name) {
    return QDBusVariant(propertiesOf(id).value(name, QString()));
}

void StatusMenu::Event(int id, const QString& event, const QDBusVariant& /*data*/, uint /*timestamp*/) {
    if (id == openId && event == "clicked"_L1)
        Q_EMIT chosen();
}

QList<int> StatusMenu::EventGroup(const QList<StatusMenuEvent>& events) {
    for (const StatusMenuEvent& event : events)
        Event(event.id, event.name, event.data, event.timestamp);
    return {};
}

bool StatusMenu::AboutToShow(int /*id*/) {
    return false;
}

QList<int> StatusMenu::AboutToShowGroup(const QList<int>& /*ids*/, QList<int>& /*idErrors*/) {
    return {};
}

} // namespace tarnwick
