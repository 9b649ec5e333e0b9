#pragma once

#include "MacInfoContent.h"
#include "SensorListModel.h"
#include "ServerStore.h"
#include "UIState.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QTimer>
#include <QtQmlIntegration>

#include <chrono>

namespace tarnwick {

/// What the sheet about this computer shows. It takes a snapshot of the hardware when it is made and then every
/// 2.5 seconds, into the UI state; so it lives as long as the sheet does, and no longer.
class MacInfoModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    /// Both must outlive the model.
    Q_PROPERTY(tarnwick::ServerStore* store MEMBER store_ REQUIRED)
    Q_PROPERTY(tarnwick::UIState* ui MEMBER ui_ REQUIRED)
    Q_PROPERTY(tarnwick::MacInfoContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(QList<tarnwick::PinPresetButton> presets READ presets CONSTANT)
    Q_PROPERTY(tarnwick::SensorListModel* sensors READ sensors CONSTANT)

public:
    static constexpr std::chrono::milliseconds snapshotInterval{2500};

    using QObject::QObject;

    [[nodiscard]] const MacInfoContent& content() const { return content_; }
    [[nodiscard]] QList<PinPresetButton> presets() const { return macPinPresets(); }
    [[nodiscard]] SensorListModel* sensors() { return &sensors_; }

    /// Takes a snapshot now.
    Q_INVOKABLE void refresh();
    /// Opens the list of sensors, or closes it.
    Q_INVOKABLE void toggleSensors();

Q_SIGNALS:
    void contentChanged();

private:
    void classBegin() override {}
    void componentComplete() override;
    void update();

    ServerStore* store_ = nullptr;
    UIState* ui_ = nullptr;
    MacInfoContent content_;
    SensorListModel sensors_;
    QTimer snapshots_;
};

} // namespace tarnwick
