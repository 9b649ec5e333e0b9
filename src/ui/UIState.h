#pragma once

#include "ContainerMarks.h"
#include "MacHardwareCollector.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QUuid>

#include <optional>
#include <utility>

namespace tarnwick {

/// The transient state that all views share; nothing of it is persisted. Main thread only. Before a field changes
/// objectWillChange() is emitted, after it the field's own signal; assigning an equal value emits nothing.
class UIState : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool showingAddServer READ showingAddServer WRITE setShowingAddServer NOTIFY showingAddServerChanged)
    Q_PROPERTY(bool showingSettings READ showingSettings WRITE setShowingSettings NOTIFY showingSettingsChanged)
    Q_PROPERTY(bool showingMacInfoSheet READ showingMacInfoSheet WRITE setShowingMacInfoSheet NOTIFY
                   showingMacInfoSheetChanged)
    Q_PROPERTY(bool showingOnboarding READ showingOnboarding WRITE setShowingOnboarding NOTIFY showingOnboardingChanged)
    Q_PROPERTY(int onboardingStep READ onboardingStep WRITE setOnboardingStep NOTIFY onboardingStepChanged)
    Q_PROPERTY(bool showingAllSensors READ showingAllSensors WRITE setShowingAllSensors NOTIFY showingAllSensorsChanged)
    Q_PROPERTY(int addServerTab READ addServerTab WRITE setAddServerTab NOTIFY addServerTabChanged)
    Q_PROPERTY(QString newServerName READ newServerName WRITE setNewServerName NOTIFY newServerNameChanged)
    Q_PROPERTY(QString newServerHost READ newServerHost WRITE setNewServerHost NOTIFY newServerHostChanged)
    Q_PROPERTY(QString newServerUser READ newServerUser WRITE setNewServerUser NOTIFY newServerUserChanged)
    Q_PROPERTY(QString newServerPort READ newServerPort WRITE setNewServerPort NOTIFY newServerPortChanged)
    Q_PROPERTY(QString newServerKey READ newServerKey WRITE setNewServerKey NOTIFY newServerKeyChanged)
    Q_PROPERTY(bool newServerDocker READ newServerDocker WRITE setNewServerDocker NOTIFY newServerDockerChanged)

public:
    explicit UIState(QObject* parent = nullptr);

    [[nodiscard]] bool showingAddServer() const { return showingAddServer_; }
    [[nodiscard]] bool showingSettings() const { return showingSettings_; }
    [[nodiscard]] bool showingMacInfoSheet() const { return showingMacInfoSheet_; }
    [[nodiscard]] bool showingOnboarding() const { return showingOnboarding_; }
    [[nodiscard]] int onboardingStep() const { return onboardingStep_; }
    [[nodiscard]] const std::optional<MacHardwareInfo>& macInfo() const { return macInfo_; }
    [[nodiscard]] bool showingAllSensors() const { return showingAllSensors_; }
    [[nodiscard]] int addServerTab() const { return addServerTab_; }
    [[nodiscard]] const QString& newServerName() const { return newServerName_; }
    [[nodiscard]] const QString& newServerHost() const { return newServerHost_; }
    [[nodiscard]] const QString& newServerUser() const { return newServerUser_; }
    [[nodiscard]] const QString& newServerPort() const { return newServerPort_; }
    [[nodiscard]] const QString& newServerKey() const { return newServerKey_; }
    [[nodiscard]] bool newServerDocker() const { return newServerDocker_; }
    [[nodiscard]] const QSet<QUuid>& expandedServers() const { return expandedServers_; }
    /// The container that is being started, stopped or restarted: one at a time across the whole popover.
    [[nodiscard]] const std::optional<QString>& restartingContainerId() const { return restartingContainerId_; }
    /// The server and the container whose row asks whether to stop it: one at a time.
    [[nodiscard]] const std::optional<std::pair<QUuid, QString>>& askedContainer() const { return askedContainer_; }
    /// All of that for one server, and why actions on its containers failed.
    [[nodiscard]] ContainerMarks containerMarks(const QUuid& serverId) const;
    [[nodiscard]] const std::optional<QUuid>& draggedServerId() const { return draggedServerId_; }

    void setShowingAddServer(bool showing);
    /// Hiding the settings also hides the tour that is shown over them.
    void setShowingSettings(bool showing);
    void setShowingMacInfoSheet(bool showing);
    void setShowingOnboarding(bool showing);
    void setOnboardingStep(int step);
    void setMacInfo(const std::optional<MacHardwareInfo>& info);
    void setShowingAllSensors(bool showing);
    void setAddServerTab(int tab);
    void setNewServerName(const QString& name);
    void setNewServerHost(const QString& host);
    void setNewServerUser(const QString& user);
    void setNewServerPort(const QString& port);
    void setNewServerKey(const QString& path);
    void setNewServerDocker(bool docker);
    void setExpandedServers(const QSet<QUuid>& ids);
    void setRestartingContainerId(const std::optional<QString>& id);
    void setAskedContainer(const std::optional<std::pair<QUuid, QString>>& container);
    /// Without a reason an earlier failure is forgotten.
    void setContainerFailure(const QUuid& serverId, const QString& containerId, const std::optional<QString>& reason);
    void setDraggedServerId(const std::optional<QUuid>& id);

    /// Clears the add-server form and its tab, but does not hide the sheet.
    void resetAddServerForm();
    [[nodiscard]] bool isExpanded(const QUuid& serverId) const { return expandedServers_.contains(serverId); }
    void toggleExpanded(const QUuid& serverId);

Q_SIGNALS:
    void objectWillChange();
    void showingAddServerChanged();
    void showingSettingsChanged();
    void showingMacInfoSheetChanged();
    void showingOnboardingChanged();
    void onboardingStepChanged();
    void macInfoChanged();
    void showingAllSensorsChanged();
    void addServerTabChanged();
    void newServerNameChanged();
    void newServerHostChanged();
    void newServerUserChanged();
    void newServerPortChanged();
    void newServerKeyChanged();
    void newServerDockerChanged();
    void expandedServersChanged();
    void restartingContainerIdChanged();
    void askedContainerChanged();
    void containerFailuresChanged();
    void draggedServerIdChanged();

private:
    template <typename T>
    void assign(T& field, const T& value, void (UIState::*changed)());

    bool showingAddServer_ = false;
    bool showingSettings_ = false;
    bool showingMacInfoSheet_ = false;
    bool showingOnboarding_ = false;
    int onboardingStep_ = 0;
    std::optional<MacHardwareInfo> macInfo_;
    bool showingAllSensors_ = false;
    int addServerTab_ = 0;
    QString newServerName_;
    QString newServerHost_;
    QString newServerUser_ = QStringLiteral("root");
    QString newServerPort_ = QStringLiteral("22");
    QString newServerKey_;
    bool newServerDocker_ = true;
    QSet<QUuid> expandedServers_;
    std::optional<QString> restartingContainerId_;
    std::optional<std::pair<QUuid, QString>> askedContainer_;
    QHash<QUuid, QHash<QString, QString>> containerFailures_;
    std::optional<QUuid> draggedServerId_;
};

} // namespace tarnwick
