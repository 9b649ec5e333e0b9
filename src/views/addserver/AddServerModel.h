#pragma once

#include "DetectedHostModel.h"
#include "ServerStore.h"
#include "UIState.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QtQmlIntegration>

namespace tarnwick {

/// What the add-server sheet shows and can do. Made with the sheet, it reads the user's ssh configuration afresh. The
/// form's fields are the UI state's.
class AddServerModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(tarnwick::ServerStore* store MEMBER store_ REQUIRED)
    Q_PROPERTY(tarnwick::UIState* ui MEMBER ui_ REQUIRED)
    Q_PROPERTY(bool canSave READ canSave NOTIFY canSaveChanged)
    Q_PROPERTY(QString importCaption READ importCaption CONSTANT)
    Q_PROPERTY(tarnwick::DetectedHostModel* hosts READ hosts CONSTANT)

public:
    explicit AddServerModel(QObject* parent = nullptr);

    [[nodiscard]] bool canSave() const { return canSave_; }
    [[nodiscard]] QString importCaption() const { return tarnwick::importCaption(hosts_.rowCount()); }
    [[nodiscard]] DetectedHostModel* hosts() { return &hosts_; }

    /// Adds the form's server and resets the form; the sheet is then to close. Nothing while canSave is false.
    Q_INVOKABLE void saveManual();
    /// Empties the form, as Cancel does.
    Q_INVOKABLE void resetForm() { ui_->resetAddServerForm(); }
    /// Adds the host of that row; nothing when the fleet has it.
    Q_INVOKABLE void importHost(int row);

Q_SIGNALS:
    void canSaveChanged();

private:
    void classBegin() override {}
    void componentComplete() override;
    void updateCanSave();
    void markAdded();
    void markAddedSoon();

    ServerStore* store_ = nullptr;
    UIState* ui_ = nullptr;
    DetectedHostModel hosts_;
    bool canSave_ = false;
    bool markingPending_ = false;
};

} // namespace tarnwick
