#pragma once

#include "OnboardingModel.h"

#include <QQuickView>

#include <functional>

namespace tarnwick {

/// The welcome tour in a window of its own: titled, of fixed size, in the middle of the screen, not shown yet. Its QML
/// engine goes when it goes. configureQuick() has been called before.
class OnboardingWindow : public QQuickView {
    Q_OBJECT

public:
    /// `onComplete` is called once, from the event loop, when the user has finished the tour; it may destroy the
    /// window. Store and state must outlive the window.
    OnboardingWindow(ServerStore& store, UIState& ui, ViewCollaborators collaborators,
                     std::function<void()> onComplete);
    ~OnboardingWindow() override;
    Q_DISABLE_COPY_MOVE(OnboardingWindow)

private:
    const ViewCollaborators collaborators_;
    OnboardingModel model_;
};

} // namespace tarnwick
