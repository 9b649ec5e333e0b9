#pragma once

#include "../computer/SampleComputer.h"
#include "../store/StoreRig.h"
#include "PinCaptions.h"
#include "PopoverView.h"
#include "UIState.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <map>

namespace tarnwick {

/// In the window's coordinates.
[[nodiscard]] inline QPoint middle(const QQuickItem* item) {
    return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
}

/// The title of a pin on the sample computer.
[[nodiscard]] inline QString titleOf(MenuBarItem item) {
    return title(item, pinWords(macWords));
}

/// One view of the module in a window, on a store in a folder of its own, which is also the user's home. It is used as
/// a user does: with mouse and keyboard, on what can be seen. A warning from QML fails the test function.
class ViewRig : public StoreRig {
public:
    UIState ui;
    SampleComputer sample;
    QStringList terminals; ///< opened: server, or server/container
    QStringList opened;    ///< addresses
    bool sshConfigIncludes = false;
    QHash<QString, SSHAliasMeaning> meanings; ///< by alias
    QStringList asked;                        ///< aliases
    bool startsAtLogin = false;
    bool isLoginItemWritable = true;
    std::map<QString, QPromise<std::optional<QString>>> actions; ///< on containers, such as "stop c1"
    const ViewCollaborators collaborators{
        .computer = sample.computer,
        .changeContainer =
            [this](const Server& server, const QString& id, ContainerAction action) {
                const QString command = SSHMetricsCollector::actionRequest(server, id, action).arguments.last();
                auto& promise = actions[command.section(u' ', 1, 2)] = QPromise<std::optional<QString>>();
                promise.start();
                return promise.future();
            },
        .openServerSSH = [this](const Server& server) { terminals += server.name; },
        .openDockerContainer =
            [this](const Server& server, const ContainerInfo& container) {
                terminals += server.name + u'/' + container.name;
            },
        .openContainerLog =
            [this](const Server& server, const ContainerInfo& container) {
                terminals += server.name + u'/' + container.name + QStringLiteral(" log");
            },
        .openAddress = [this](const QUrl& address) { opened += address.toString(); },
        .sshHosts = [this] { return sshHosts; },
        .sshConfigIncludes = [this] { return sshConfigIncludes; },
        .askAlias =
            [this](const SSHConfigHost& host) {
                asked += host.alias;
                return QtFuture::makeReadyFuture(meanings.value(host.alias));
            },
        .startsAtLogin = [this] { return startsAtLogin; },
        .setStartsAtLogin = [this](bool starts) { startsAtLogin = starts && isLoginItemWritable; },
    };
    std::unique_ptr<QQuickView> view;

    explicit ViewRig(const QList<Server>& servers = {}, const SystemWords& words = macWords) : sample(words) {
        static const bool configured = (configureQuick(), true);
        Q_UNUSED(configured)
        QTest::failOnWarning(QRegularExpression(QStringLiteral("qrc:")));
        qputenv("HOME", home.path().toLocal8Bit());
        startWith(servers);
    }

    /// Shows a new view of that name and gives it the keyboard. Its model, a property of that name, belongs to it.
    template <typename Model>
    Model* show(const QString& name, const QString& property, const char* closing = SIGNAL(dismissed())) {
        view = std::make_unique<QQuickView>();
        auto* const model = new Model(*store, ui, collaborators, view.get());
        loadView(*view, name, {{property, QVariant::fromValue(model)}});
        showWindow();
        closings_ = std::make_unique<QSignalSpy>(view->rootObject(), closing);
        return model;
    }
    void showPopover() {
        view = std::make_unique<PopoverView>(*store, ui, collaborators);
        showWindow();
        closings_ = std::make_unique<QSignalSpy>(view.get(), SIGNAL(closeRequested()));
    }
    /// How often the view has asked to be closed.
    [[nodiscard]] qsizetype closings() const { return closings_->count(); }

    /// The content of the view's window, and of each of its open menus.
    [[nodiscard]] QList<const QQuickItem*> roots() const {
        QList<const QQuickItem*> roots{view->contentItem()};
        for (const QWindow* window : QGuiApplication::topLevelWindows())
            if (window->isVisible() && window->transientParent() == view.get())
                roots += qobject_cast<const QQuickWindow*>(window)->contentItem();
        return roots;
    }
    /// The visible items that are named so or say so, from top to bottom; not those inside of another. Those of the
    /// view's menus, too.
    [[nodiscard]] QList<QQuickItem*> items(const QString& name) const {
        QList<QQuickItem*> found;
        for (const QQuickItem* root : roots())
            found += itemsBelow(root, name);
        std::ranges::stable_sort(found, {}, [](const QQuickItem* item) { return item->mapToScene({}).y(); });
        return found;
    }
    [[nodiscard]] QQuickItem* item(const QString& name) const { return items(name).value(0); }
    /// What the item says.
    [[nodiscard]] QString text(const QString& name) const { return item(name)->property("text").toString(); }

    /// Clicks the item once it is there and has come to rest; scrolls to it when it is out of sight.
    void click(const QString& name, qsizetype which = 0, Qt::MouseButton button = Qt::LeftButton) const {
        QPoint last;
        QQuickItem* item = nullptr;
        const auto isAtRest = [&] {
            item = items(name).value(which);
            if (!item)
                return false;
            if (isOutOfSight(item))
                item->forceActiveFocus(Qt::TabFocusReason);
            const QPoint before = std::exchange(last, middle(item));
            return before == last;
        };
        QTRY_VERIFY2(isAtRest(), qPrintable(QStringLiteral("nothing at rest says ") + name));
        QTest::mouseClick(item->window(), button, {}, last);
    }
    void press(Qt::Key key, int times = 1, Qt::KeyboardModifiers modifiers = {}) const {
        for (int time = 0; time < times; ++time)
            QTest::keyClick(view.get(), key, modifiers);
    }
    void type(const QString& text) const {
        for (const QChar character : text)
            QTest::keyClick(view.get(), character.toLatin1());
    }

    /// As `settings.json` has them.
    [[nodiscard]] AppSettings savedSettings() const {
        return std::get<AppSettings>(decodeSettings(read(QStringLiteral("settings.json"))));
    }
    [[nodiscard]] MenuBarItemSet savedPins() const { return savedSettings().pinnedMenuBarItems; }

private:
    void showWindow() const {
        QVERIFY(view->errors().isEmpty());
        view->show();
        QVERIFY(QTest::qWaitForWindowActive(view.get()));
    }
    [[nodiscard]] static QList<QQuickItem*> itemsBelow(const QQuickItem* root, const QString& name) {
        QList<QQuickItem*> found;
        for (QQuickItem* child : root->childItems())
            if (child->isVisible() && (child->objectName() == name || child->property("text").toString() == name))
                found += child;
            else if (child->isVisible())
                found += itemsBelow(child, name);
        return found;
    }
    [[nodiscard]] static bool isOutOfSight(const QQuickItem* item) {
        for (const QQuickItem* area = item; area; area = area->parentItem())
            if (area->clip() && !area->contains(area->mapFromScene(middle(item))))
                return true;
        return false;
    }

    std::unique_ptr<QSignalSpy> closings_;
};

/// The popover of a fleet.
struct PopoverRig : ViewRig {
    explicit PopoverRig(const QList<Server>& servers) : ViewRig(servers) { showPopover(); }
};

} // namespace tarnwick
