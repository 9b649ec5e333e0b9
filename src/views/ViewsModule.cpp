#include "PopoverView.h"
#include "ViewFactory.h"
#include "tour/OnboardingWindow.h"

#include <QObject>

namespace tarnwick {

/// The views as a module that the program loads when it opens its first window.
class ViewsModule : public QObject, public ViewFactory {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "example.tarnwick.ViewFactory/1")
    Q_INTERFACES(tarnwick::ViewFactory)

public:
    ViewsModule() { configureQuick(); }

    std::unique_ptr<QWindow> makePopover(ServerStore& store, UIState& ui, ThisComputer& computer, bool rounded,
                                         std::function<void()> close) override {
        auto view = std::make_unique<PopoverView>(store, ui, ViewCollaborators::real(computer));
        if (!view->rootObject())
            return nullptr;
        view->setRounded(rounded);
        connect(view.get(), &PopoverView::closeRequested, view.get(), close);
        return view;
    }

    std::unique_ptr<QWindow> makeOnboardingWindow(ServerStore& store, UIState& ui, ThisComputer& computer,
                                                  std::function<void()> onComplete) override {
        auto window =
            std::make_unique<OnboardingWindow>(store, ui, ViewCollaborators::real(computer), std::move(onComplete));
        return window->rootObject() ? std::move(window) : nullptr;
    }
};

} // namespace tarnwick

#include "ViewsModule.moc"
