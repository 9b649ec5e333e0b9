#include "OnboardingModel.h"

namespace tarnwick {

OnboardingModel::OnboardingModel(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators,
                                 QObject* parent)
    : QObject(parent)
    , store_(store)
    , ui_(ui)
    , collaborators_(collaborators)
    , cardActions_(store, ui, collaborators, demoServer_)
    , pins_(store, collaborators_.computer.words()) {
    ui.setExpandedServers(QSet(ui.expandedServers()) << demoServer_.id);
    if (!ui.macInfo())
        ui.setMacInfo(collaborators_.computer.info());
    content_ = publishedContent();

    connect(&ui, &UIState::expandedServersChanged, this, &OnboardingModel::demoCardChanged);
    connect(&ui, &UIState::restartingContainerIdChanged, this, &OnboardingModel::demoCardChanged);
    connect(&ui, &UIState::askedContainerChanged, this, &OnboardingModel::demoCardChanged);
    connect(&ui, &UIState::containerFailuresChanged, this, &OnboardingModel::demoCardChanged);
    connect(&ui, &UIState::draggedServerIdChanged, this, &OnboardingModel::demoCardChanged);
    connect(&ui, &UIState::onboardingStepChanged, this, &OnboardingModel::update);
    connect(&ui, &UIState::macInfoChanged, this, &OnboardingModel::update);
    connect(&store, &ServerStore::settingsChanged, this, &OnboardingModel::update);
}

OnboardingContent OnboardingModel::publishedContent() const {
    return onboardingContent(ui_.onboardingStep(), ui_.macInfo() ? *ui_.macInfo() : collaborators_.computer.info(),
                             store_.settings().pinnedMenuBarItems, collaborators_.computer.words());
}

void OnboardingModel::update() {
    OnboardingContent content = publishedContent();
    if (content == content_)
        return;
    content_ = std::move(content);
    Q_EMIT contentChanged();
}

ServerCardContent OnboardingModel::demoCard() const {
    return serverCardContent(demoServer_,
                             {.isExpanded = ui_.isExpanded(demoServer_.id),
                              .isDragged = ui_.draggedServerId() == demoServer_.id,
                              .containers = ui_.containerMarks(demoServer_.id)},
                             collaborators_.computer.words());
}

void OnboardingModel::back() {
    ui_.setOnboardingStep(ui_.onboardingStep() - 1);
}

void OnboardingModel::next() {
    ui_.setOnboardingStep(ui_.onboardingStep() + 1);
}

void OnboardingModel::open(const TourLink& link) {
    collaborators_.openAddress(link.address);
}

void OnboardingModel::complete() {
    store_.editSettings([](AppSettings& settings) { settings.hasCompletedOnboarding = true; });
    Q_EMIT completed();
}

} // namespace tarnwick
