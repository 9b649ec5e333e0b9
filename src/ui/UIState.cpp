#include "UIState.h"

namespace tarnwick {

UIState::UIState(QObject* parent) : QObject(parent) {}

template <typename T>
void UIState::assign(T& field, const T& value, void (UIState::*changed)()) {
    if (field == value)
        return;
    Q_EMIT objectWillChange();
    field = value;
    Q_EMIT(this->*changed)();
}

void UIState::setShowingAddServer(bool showing) {
    assign(showingAddServer_, showing, &UIState::showingAddServerChanged);
}

void UIState::setShowingSettings(bool showing) {
    assign(showingSettings_, showing, &UIState::showingSettingsChanged);
    if (!showing)
        setShowingOnboarding(false);
}

void UIState::setShowingMacInfoSheet(bool showing) {
    assign(showingMacInfoSheet_, showing, &UIState::showingMacInfoSheetChanged);
}

void UIState::setShowingOnboarding(bool showing) {
    assign(showingOnboarding_, showing, &UIState::showingOnboardingChanged);
}

void UIState::setOnboardingStep(int step) {
    assign(onboardingStep_, step, &UIState::onboardingStepChanged);
}

void UIState::setMacInfo(const std::optional<MacHardwareInfo>& info) {
    assign(macInfo_, info, &UIState::macInfoChanged);
}

void UIState::setShowingAllSensors(bool showing) {
    assign(showingAllSensors_, showing, &UIState::showingAllSensorsChanged);
}

void UIState::setAddServerTab(int tab) {
    assign(addServerTab_, tab, &UIState::addServerTabChanged);
}

void UIState::setNewServerName(const QString& name) {
    assign(newServerName_, name, &UIState::newServerNameChanged);
}

void UIState::setNewServerHost(const QString& host) {
    assign(newServerHost_, host, &UIState::newServerHostChanged);
}

void UIState::setNewServerUser(const QString& user) {
    assign(newServerUser_, user, &UIState::newServerUserChanged);
}

void UIState::setNewServerPort(const QString& port) {
    assign(newServerPort_, port, &UIState::newServerPortChanged);
}

void UIState::setNewServerKey(const QString& path) {
    assign(newServerKey_, path, &UIState::newServerKeyChanged);
}

void UIState::setNewServerDocker(bool docker) {
    assign(newServerDocker_, docker, &UIState::newServerDockerChanged);
}

void UIState::setExpandedServers(const QSet<QUuid>& ids) {
    assign(expandedServers_, ids, &UIState::expandedServersChanged);
}

void UIState::setRestartingContainerId(const std::optional<QString>& id) {
    assign(restartingContainerId_, id, &UIState::restartingContainerIdChanged);
}

void UIState::setAskedContainer(const std::optional<std::pair<QUuid, QString>>& container) {
    assign(askedContainer_, container, &UIState::askedContainerChanged);
}

void UIState::setContainerFailure(const QUuid& serverId, const QString& containerId,
                                  const std::optional<QString>& reason) {
    QHash<QUuid, QHash<QString, QString>> failures = containerFailures_;
    QHash<QString, QString>& ofServer = failures[serverId];
    if (reason)
        ofServer.insert(containerId, *reason);
    else
        ofServer.remove(containerId);
    if (ofServer.isEmpty())
        failures.remove(serverId);
    assign(containerFailures_, failures, &UIState::containerFailuresChanged);
}

ContainerMarks UIState::containerMarks(const QUuid& serverId) const {
    ContainerMarks marks{.busyId = restartingContainerId_, .failures = containerFailures_.value(serverId)};
    if (askedContainer_ && askedContainer_->first == serverId)
        marks.askedId = askedContainer_->second;
    return marks;
}

void UIState::setDraggedServerId(const std::optional<QUuid>& id) {
    assign(draggedServerId_, id, &UIState::draggedServerIdChanged);
}

void UIState::resetAddServerForm() {
    const UIState initial;
    setAddServerTab(initial.addServerTab_);
    setNewServerName(initial.newServerName_);
    setNewServerHost(initial.newServerHost_);
    setNewServerUser(initial.newServerUser_);
    setNewServerPort(initial.newServerPort_);
    setNewServerKey(initial.newServerKey_);
    setNewServerDocker(initial.newServerDocker_);
}

void UIState::toggleExpanded(const QUuid& serverId) {
    QSet<QUuid> ids = expandedServers_;
    if (!ids.remove(serverId))
        ids.insert(serverId);
    setExpandedServers(ids);
}

} // namespace tarnwick
