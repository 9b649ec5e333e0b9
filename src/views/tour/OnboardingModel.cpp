#include "OnboardingModel.h"

#include "ViewCollaborators.h"

#include <QDesktopServices>

namespace tarnwick {

void OnboardingModel::componentComplete() {
    ui_->setExpandedServers(QSet(ui_->expandedServers()) << demoServer_.id);
    if (!ui_->macInfo())
        ui_->setMacInfo(computerOf(*this).info());
    cardActions_ = std::make_unique<CardActions>(*store_, *ui_, ViewCollaborators::real(computerOf(*this)));
    Q_EMIT cardActionsChanged();

    connect(ui_, &UIState::expandedServersChanged, this, &OnboardingModel::demoCardChanged);
    connect(ui_, &UIState::restartingContainerIdChanged, this, &OnboardingModel::demoCardChanged);
    connect(ui_, &UIState::draggedServerIdChanged, this, &OnboardingModel::demoCardChanged);
    Q_EMIT demoCardChanged();

    connect(ui_, &UIState::onboardingStepChanged, this, &OnboardingModel::update);
    connect(ui_, &UIState::macInfoChanged, this, &OnboardingModel::update);
    connect(store_, &ServerStore::settingsChanged, this, &OnboardingModel::update);
    update();
}

void OnboardingModel::update() {
    const MacHardwareInfo info = ui_->macInfo() ? *ui_->macInfo() : computerOf(*this).info();
    OnboardingContent content = onboardingContent(ui_->onboardingStep(), info, store_->settings().pinnedMenuBarItems);
    if (content == content_)
        return;
    content_ = std::move(content);
    Q_EMIT contentChanged();
}

ServerCardContent OnboardingModel::demoCard() const {
    return serverCardContent(demoServer_, {.isExpanded = ui_ && ui_->isExpanded(demoServer_.id),
                                           .isDragged = ui_ && ui_->draggedServerId() == demoServer_.id,
                                           .restartingContainerId = ui_ ? ui_->restartingContainerId() : std::nullopt});
}

void OnboardingModel::back() {
    ui_->setOnboardingStep(ui_->onboardingStep() - 1);
}

void OnboardingModel::next() {
    ui_->setOnboardingStep(ui_->onboardingStep() + 1);
}

void OnboardingModel::open(const TourLink& link) {
    QDesktopServices::openUrl(link.address);
}

void OnboardingModel::complete() {
    store_->editSettings([](AppSettings& settings) { settings.hasCompletedOnboarding = true; });
    Q_EMIT completed();
}

} // namespace tarnwick
