#pragma once

#include "CardMenu.h"
#include "ServerCardContent.h"
#include "ViewCollaborators.h"

#include <QObject>
#include <QtQmlIntegration>

namespace tarnwick {

/// What a server card can do. Each operation takes the content of the card that was pressed and acts on its server as
/// it was shown; one that the store no longer has changes nothing.
class CardActions : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Comes with the view")

public:
    /// Both must outlive the actions.
    CardActions(ServerStore& store, UIState& ui, ViewCollaborators collaborators, QObject* parent = nullptr);

    Q_INVOKABLE void togglePause(const tarnwick::ServerCardContent& card);
    Q_INVOKABLE void remove(const tarnwick::ServerCardContent& card);
    Q_INVOKABLE void refresh(const tarnwick::ServerCardContent& card);
    Q_INVOKABLE void openSSH(const tarnwick::ServerCardContent& card);
    Q_INVOKABLE void toggleExpanded(const tarnwick::ServerCardContent& card);
    Q_INVOKABLE void showHardware();

    Q_INVOKABLE void openShell(const tarnwick::ServerCardContent& card, const tarnwick::ContainerRowContent& row);
    /// Nothing while another restart is in flight. Goes on when the view is closed, and then refreshes the server.
    Q_INVOKABLE void restart(const tarnwick::ServerCardContent& card, const tarnwick::ContainerRowContent& row);

    Q_INVOKABLE [[nodiscard]] QList<tarnwick::CardMenuEntry> menu(const tarnwick::ServerCardContent& card) const;
    Q_INVOKABLE [[nodiscard]] QList<tarnwick::CardMenuEntry> pinMenu() const;
    Q_INVOKABLE void choose(const tarnwick::ServerCardContent& card, const tarnwick::CardMenuEntry& entry);

    Q_INVOKABLE void beginDrag(const tarnwick::ServerCardContent& card);
    Q_INVOKABLE void dragEntered(const tarnwick::ServerCardContent& target);
    /// Over a card or not: the mark goes and the order is saved.
    Q_INVOKABLE void endDrag();

private:
    ServerStore& store_;
    UIState& ui_;
    ViewCollaborators collaborators_;
};

} // namespace tarnwick
