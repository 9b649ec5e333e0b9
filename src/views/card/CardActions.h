#pragma once

#include "CardMenu.h"
#include "CardWords.h"
#include "ServerStore.h"
#include "UIState.h"
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
    /// `unlisted` has a card although the store does not list it: the tour's demo server. The first three must outlive
    /// the actions.
    CardActions(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators,
                std::optional<Server> unlisted = std::nullopt, QObject* parent = nullptr);

    /// The question whether to stop a container goes with the view.
    ~CardActions() override;
    Q_DISABLE_COPY_MOVE(CardActions)

    [[nodiscard]] CardWords words() const { return cardWords(collaborators_.computer.words()); }

    Q_INVOKABLE void togglePause(const QUuid& serverId);
    Q_INVOKABLE void remove(const QUuid& serverId);
    Q_INVOKABLE void refresh(const QUuid& serverId);
    Q_INVOKABLE void openSSH(const QUuid& serverId);
    Q_INVOKABLE void toggleExpanded(const QUuid& serverId);
    Q_INVOKABLE void showHardware();

    Q_INVOKABLE void openShell(const QUuid& serverId, const QString& containerId);
    Q_INVOKABLE void openLog(const QUuid& serverId, const QString& containerId);
    /// Does nothing while another restart, start or stop runs. Continues when the view is closed, and refreshes the
    /// server afterwards. Why it failed is kept in the UI state until the next one of that container, or until it is
    /// found in another state.
    Q_INVOKABLE void restart(const QUuid& serverId, const QString& containerId);
    /// The same, once the question has been answered.
    Q_INVOKABLE void stop(const QUuid& serverId, const QString& containerId);
    Q_INVOKABLE void cancelStop();

    Q_INVOKABLE [[nodiscard]] QList<tarnwick::CardMenuEntry> menu(const QUuid& serverId) const;
    Q_INVOKABLE [[nodiscard]] QList<tarnwick::CardMenuEntry> containerMenu(const QUuid& serverId,
                                                                           const QString& containerId) const;
    Q_INVOKABLE [[nodiscard]] QList<tarnwick::CardMenuEntry> pinMenu() const;
    Q_INVOKABLE void choose(const QUuid& serverId, const tarnwick::CardMenuEntry& entry);

    Q_INVOKABLE void beginDrag(const QUuid& serverId);
    Q_INVOKABLE void dragEntered(const QUuid& targetId);
    /// Continues the drag of a card beyond the window: its id is offered as plain text to whatever accepts a drop,
    /// until the drag ends. To be called while the mouse button is down.
    Q_INVOKABLE void dragOut();
    /// Whether a text that is dragged over the cards is the id of the card that is dragged.
    Q_INVOKABLE [[nodiscard]] bool accepts(const QString& text) const;
    /// Clears the drag mark and saves the order, whether the drag ended over a card or not.
    Q_INVOKABLE void endDrag();

private:
    [[nodiscard]] std::optional<Server> server(const QUuid& id) const;
    void change(const QUuid& serverId, const QString& containerId, ContainerAction action);
    /// A container that runs no longer cannot be stopped.
    void dropOldQuestion();

    ServerStore& store_;
    UIState& ui_;
    const ViewCollaborators& collaborators_;
    const std::optional<Server> unlisted_;
};

} // namespace tarnwick
