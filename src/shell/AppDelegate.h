#pragma once

#include "OncePerTurn.h"
#include "Popover.h"
#include "ServerStore.h"
#include "StatusItem.h"
#include "StatusItemLabel.h"
#include "ThisComputer.h"
#include "UIState.h"
#include "ViewFactory.h"

#include <QObject>
#include <QTimer>
#include <QWindow>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace tarnwick {

/// What the delegate works with. Tests replace it.
struct AppSurroundings {
    StoreCollaborators store;
    ThisComputer& computer; ///< outlives the delegate
    /// Monotonic time.
    std::function<std::chrono::nanoseconds()> clock;
    std::unique_ptr<StatusItem> statusItem;
    std::unique_ptr<Popover> popover; ///< null where there is no display
    /// Loads the views at its first call; null when they cannot be loaded. Called only where there is a popover.
    std::function<ViewFactory*()> views;
};

/// The shell of the program: owns the store and the UI state, keeps the status item's label up to date, toggles the
/// popover and shows the welcome tour. Main thread only.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    explicit AppDelegate(AppSurroundings surroundings, QObject* parent = nullptr);
    ~AppDelegate() override;

    /// The launch sequence. Call once, just before the event loop runs.
    void applicationDidFinishLaunching();
    /// Saves, and waits for it as ServerStore::finishSaving() does; safe to call before the launch sequence.
    void applicationWillTerminate();
    /// Leads, or follows a leader, from now on; see ServerStore::setRole(). Call after the launch sequence.
    void setRole(Role role) { store_->setRole(role); }

    void statusBarButtonClicked(QPoint position);
    /// Composes symbol and title and shows them.
    void updateStatusBarButton();
    void showPopover();
    void closePopover();
    /// Brings the tour's window to the front, and makes it when it is not open.
    void showOnboardingWindow();

    [[nodiscard]] ServerStore* store() const { return store_.get(); }
    [[nodiscard]] UIState* ui() const { return ui_.get(); }
    [[nodiscard]] QWindow* onboardingWindow() const { return onboardingWindow_.get(); }

private:
    void finishOnboarding();
    /// What `make` makes of the views; null without a display, and once that has failed: it would again, at each click.
    std::unique_ptr<QWindow> makeWindow(const std::function<std::unique_ptr<QWindow>(ViewFactory&)>& make);
    bool eventFilter(QObject* watched, QEvent* event) override;

    AppSurroundings surroundings_;
    std::unique_ptr<ServerStore> store_;
    std::unique_ptr<UIState> ui_;
    std::unique_ptr<QWindow> onboardingWindow_;
    QTimer labelTimer_{this};
    bool lacksViews_ = false;
    QPoint anchor_;
    std::optional<std::chrono::nanoseconds> lastClosedTime_;
    OncePerTurn updateSoon_{this, [this] {
                                updateStatusBarButton();
                            }};
};

} // namespace tarnwick
