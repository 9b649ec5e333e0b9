#pragma once

#include "MacInfoContent.h"
#include "ServerStore.h"
#include "UIState.h"
#include "ViewCollaborators.h"
#include "controls/RowListModel.h"
#include "settings/PinListModel.h"
#include "settings/PinPresetButton.h"

#include <QObject>
#include <QTimer>
#include <QtQmlIntegration>

#include <chrono>

namespace tarnwick {

/// What the sheet about this computer shows and can do. It takes a snapshot of the hardware when it is made and then
/// every 2.5 seconds, into the UI state, so it should end with the sheet.
class MacInfoModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Comes with its view")
    Q_PROPERTY(tarnwick::MacInfoContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(QList<tarnwick::PinPresetButton> presets READ presets CONSTANT)
    Q_PROPERTY(tarnwick::PinListModel* pins READ pins CONSTANT)
    /// Hottest first.
    Q_PROPERTY(QAbstractItemModel* sensors READ sensors CONSTANT)

public:
    static constexpr std::chrono::milliseconds snapshotInterval{2500};

    /// Store, state and the collaborators' computer must outlive the model.
    MacInfoModel(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators, QObject* parent = nullptr);

    [[nodiscard]] const MacInfoContent& content() const { return content_; }
    [[nodiscard]] QList<PinPresetButton> presets() const { return pinPresetButtons(sheetCaption); }
    [[nodiscard]] PinListModel* pins() { return &pins_; }
    [[nodiscard]] QAbstractItemModel* sensors() { return &sensors_; }

    /// Takes a snapshot now.
    Q_INVOKABLE void refresh();
    /// Opens the list of sensors, or closes it.
    Q_INVOKABLE void toggleSensors();

Q_SIGNALS:
    void contentChanged();

private:
    void update();

    ServerStore& store_;
    UIState& ui_;
    ThisComputer& computer_;
    MacInfoContent content_;
    PinListModel pins_;
    RowListModel<MacSensorRow> sensors_;
    QTimer snapshots_;
};

} // namespace tarnwick
