#pragma once

#include <QObject>
#include <QtPlugin>

#include <functional>
#include <memory>

class QWindow;

namespace tarnwick {

class ServerStore;
class ThisComputer;
class UIState;

/// Makes the contents of the program's windows. The views implement it in a module of their own, which is loaded with
/// the first window, so that a process without windows does not map Qt Quick. Each content is null when it cannot be
/// loaded; why is then one line on standard error. Main thread only.
class ViewFactory {
public:
    virtual ~ViewFactory() = default;

    /// The popover's content at its own size. `rounded`: the window is translucent, so its corners can be round.
    /// The content calls `close` to ask for the popover to be closed.
    [[nodiscard]] virtual std::unique_ptr<QWindow> makePopover(ServerStore& store, UIState& ui, ThisComputer& computer,
                                                               bool rounded, std::function<void()> close) = 0;
    /// The welcome tour in a window of its own, not shown yet; `onComplete` is called from the event loop when the user
    /// has finished it.
    [[nodiscard]] virtual std::unique_ptr<QWindow>
    makeOnboardingWindow(ServerStore& store, UIState& ui, ThisComputer& computer, std::function<void()> onComplete) = 0;
};

} // namespace tarnwick

Q_DECLARE_INTERFACE(tarnwick::ViewFactory, "example.tarnwick.ViewFactory/1")
