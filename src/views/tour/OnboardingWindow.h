#pragma once

#include <QWindow>

#include <functional>
#include <memory>

namespace tarnwick {

class ServerStore;
struct ViewCollaborators;
class UIState;

/// The welcome tour in a window of its own: titled, of fixed size, in the middle of the screen, not shown yet. Its QML
/// engine goes when it goes. `onComplete` is called once, from the event loop, when the user has finished the tour; it
/// may destroy the window. Store and state must outlive the window. configureQuick() has been called before.
[[nodiscard]] std::unique_ptr<QWindow> makeOnboardingWindow(ServerStore& store, UIState& ui,
                                                            const ViewCollaborators& collaborators,
                                                            std::function<void()> onComplete);

} // namespace tarnwick
