#pragma once

#include "ViewRig.h"

#include <map>

namespace tarnwick {

/// The popover over a scripted store, pressed like a user presses it.
struct PopoverRig : StoreRig {
    UIState ui;
    SampleComputer sample;
    QStringList terminals; ///< opened: server, or server/container
    QStringList opened;    ///< addresses
    std::map<QString, QPromise<bool>> restarts;
    const ViewCollaborators collaborators{
        .computer = sample.computer,
        .restartContainer =
            [this](const Server&, const QString& id) {
                QPromise<bool>& promise = restarts[id];
                promise.start();
                return promise.future();
            },
        .openServerSSH = [this](const Server& server) { terminals += server.name; },
        .openDockerContainer =
            [this](const Server& server, const ContainerInfo& container) {
                terminals += server.name + u'/' + container.name;
            },
        .openAddress = [this](const QUrl& address) { opened += address.toString(); },
        .sshHosts = [this] { return sshHosts; },
    };
    std::unique_ptr<PopoverView> view;

    explicit PopoverRig(const QList<Server>& servers) {
        static const bool configured = (configureQuick(), true);
        Q_UNUSED(configured)
        failOnQmlWarnings();
        startWith(servers);
        view = std::make_unique<PopoverView>(*store, ui, collaborators);
        QVERIFY(view->errors().isEmpty());
        view->show();
        QVERIFY(QTest::qWaitForWindowActive(view.get()));
    }

    /// The visible items whose `text` this is, from top to bottom.
    [[nodiscard]] QList<QQuickItem*> all(const QString& text) const {
        return visibleItems(view->contentItem(), "text", text);
    }
    /// Clicks the item once it is there and has come to rest.
    void press(const QString& text, qsizetype which = 0, Qt::MouseButton button = Qt::LeftButton) {
        QPoint last;
        const auto isAtRest = [&] {
            const QList<QQuickItem*> items = all(text);
            if (items.size() <= which)
                return false;
            const QPoint before = std::exchange(last, middle(items[which]));
            return before == last;
        };
        QTRY_VERIFY2(isAtRest(), qPrintable(QStringLiteral("nothing at rest says ") + text));
        QTest::mouseClick(view.get(), button, {}, last);
    }
    void key(Qt::Key key, int times = 1) const {
        for (int time = 0; time < times; ++time)
            QTest::keyClick(view.get(), key);
    }
    [[nodiscard]] QString focused() const {
        const QQuickItem* item = view->activeFocusItem();
        return item ? item->property("text").toString() : QString();
    }

    [[nodiscard]] static ServerMetrics metricsWith(const QList<ContainerInfo>& containers = {}) {
        ServerMetrics metrics;
        metrics.memoryTotalMB = 1024;
        metrics.latencyMs = 19;
        metrics.containers = containers;
        return metrics;
    }
    [[nodiscard]] static ContainerInfo container(const QString& id, const QString& state) {
        return {id, id, QStringLiteral("image"), QStringLiteral("Up 2 days"), state, {}};
    }
};

} // namespace tarnwick
