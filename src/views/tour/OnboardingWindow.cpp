#include "OnboardingWindow.h"

#include "QuickViews.h"

#include <QScreen>

using namespace Qt::StringLiterals;

namespace tarnwick {

OnboardingWindow::OnboardingWindow(ServerStore& store, UIState& ui, ViewCollaborators collaborators,
                                   std::function<void()> onComplete)
    : collaborators_(std::move(collaborators)), model_(store, ui, collaborators_) {
    setFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
             Qt::WindowCloseButtonHint);
    setTitle(SharedCaptions::welcome.toString());
    loadView(*this, u"tour/OnboardingView"_s, {{u"tour"_s, QVariant::fromValue(&model_)}});

    const QSize fixed = initialSize();
    QRect place({}, fixed);
    place.moveCenter(screen()->availableGeometry().center());
    setGeometry(place);
    setMinimumSize(fixed);
    setMaximumSize(fixed);

    // Queued, since the callback may destroy the window; once, since a second press may be queued already.
    connect(&model_, &OnboardingModel::completed, this, std::move(onComplete),
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}

OnboardingWindow::~OnboardingWindow() {
    setSource({}); // the items go before the model that they show
}

} // namespace tarnwick
