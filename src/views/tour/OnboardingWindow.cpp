#include "OnboardingWindow.h"

#include "OnboardingModel.h"
#include "ViewCollaborators.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace tarnwick {

std::unique_ptr<QWindow> makeOnboardingWindow(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators,
                                              std::function<void()> onComplete) {
    auto window = std::make_unique<QQuickView>();
    window->setFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                     Qt::WindowCloseButtonHint);
    window->setTitle(u"Welcome to Tarnwick"_s);
    setComputer(*window->engine(), collaborators.computer);
    window->engine()->addImportPath(u"qrc:/qt/qml"_s);
    window->setInitialProperties({{u"store"_s, QVariant::fromValue(&store)}, {u"ui"_s, QVariant::fromValue(&ui)}});
    window->setSource(QUrl(u"qrc:/qt/qml/Tarnwick/tour/OnboardingView.qml"_s));

    const QSize size = window->initialSize();
    QRect place({}, size);
    place.moveCenter(window->screen()->availableGeometry().center());
    window->setGeometry(place);
    window->setMinimumSize(size);
    window->setMaximumSize(size);

    // Queued, and once: whoever is told may destroy the window, and a second press may be on its way.
    QObject::connect(window->rootObject()->findChild<OnboardingModel*>(), &OnboardingModel::completed, window.get(),
                     std::move(onComplete),
                     static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    return window;
}

} // namespace tarnwick
