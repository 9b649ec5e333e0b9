#pragma once

#include "CardMenu.h"
#include "CardWords.h"
#include "ViewCollaborators.h"

#include <QObject>
#include <QUuid>
#include <QtQmlIntegration>

#include <optional>

namespace tarnwick {

/// What a server card can do. Each operation takes the id of the card's server and acts on that server as it is at that
/// moment; one that is gone by then changes nothing.
class CardActions : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Comes with its view")
    Q_PROPERTY(tarnwick::CardWords words READ words CONSTANT)

public:
    /// `unlisted` is a server that has a card without being in the store: the tour's. Store and state must outlive the
    /// actions.
    CardActions(ServerStore& store, UIState& ui, ViewCollaborators collaborators,
                std::optional<Server> unlisted = std::nullopt, QObject* parent = nullptr);

    [[nodiscard]] CardWords words() const { return {}; }

    Q_INVOKABLE void togglePause(const QUuid& serverId);
    Q_INVOKABLE void remove(const QUuid& serverId);
    Q_INVOKABLE void refresh(const QUuid& serverId);
    Q_INVOKABLE void openSSH(const QUuid& serverId);
    Q_INVOKABLE void toggleExpanded(const QUuid& serverId);
    Q_INVOKABLE void showHardware();

    Q_INVOKABLE void openShell(const QUuid& serverId, const QString& containerId);
    /// Nothing while another restart is in flight. Goes on when the view is closed, and then refreshes the server.
    Q_INVOKABLE void restart(const QUuid& serverId, const QString& containerId);

    Q_INVOKABLE [[nodiscard]] QList<tarnwick::CardMenuEntry> menu(const QUuid& serverId) const;
    Q_INVOKABLE [[nodiscard]] QList<tarnwick::CardMenuEntry> pinMenu() const;
    Q_INVOKABLE void choose(const QUuid& serverId, const tarnwick::CardMenuEntry& entry);

    Q_INVOKABLE void beginDrag(const QUuid& serverId);
    Q_INVOKABLE void dragEntered(const QUuid& targetId);
    /// Over a card or not: the mark goes and the order is saved.
    Q_INVOKABLE void endDrag();

private:
    [[nodiscard]] std::optional<Server> server(const QUuid& id) const;

    ServerStore& store_;
    UIState& ui_;
    const ViewCollaborators collaborators_;
    const std::optional<Server> unlisted_;
};

} // namespace tarnwick
