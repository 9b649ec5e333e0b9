#pragma once

#include "AddServerContent.h"
#include "AliasMeanings.h"
#include "OncePerTurn.h"
#include "ServerStore.h"
#include "UIState.h"
#include "ViewCollaborators.h"
#include "controls/RowListModel.h"

#include <QObject>
#include <QtQmlIntegration>

#include <functional>

namespace tarnwick {

/// The hosts, with word of each row that a view reads, which it does for those that are seen.
class DetectedHostModel : public RowListModel<DetectedHost> {
public:
    std::function<void(int row)> isRead;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        QVariant content = RowListModel::data(index, role);
        if (content.isValid())
            isRead(index.row());
        return content;
    }
};

/// What the add-server sheet shows and can do. It reads the user's ssh configuration when it is made, and again when
/// the fleet changes or the other tab is chosen. In the import tab it asks ssh what the aliases mean of the hosts that
/// are seen. The form's fields are in the UI state.
class AddServerModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Comes with its view")
    Q_PROPERTY(tarnwick::UIState* ui READ ui CONSTANT)
    Q_PROPERTY(bool canSave READ canSave NOTIFY canSaveChanged)
    Q_PROPERTY(tarnwick::AddServerWords words READ words CONSTANT)
    Q_PROPERTY(QString importCaption READ importCaption NOTIFY importCaptionChanged)
    /// What the list cannot show; empty where it shows all.
    Q_PROPERTY(QString includeGuide READ includeGuide NOTIFY includeGuideChanged)
    /// The hosts of the ssh configuration, in the file's order; the fleet has some of them already.
    Q_PROPERTY(QAbstractItemModel* hosts READ hosts CONSTANT)

public:
    /// All three must outlive the model.
    AddServerModel(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators, QObject* parent = nullptr);

    [[nodiscard]] UIState* ui() const { return &ui_; }
    [[nodiscard]] bool canSave() const { return canSave_; }
    [[nodiscard]] const AddServerWords& words() const { return words_; }
    [[nodiscard]] QString importCaption() const { return tarnwick::importCaption(hosts_.size()); }
    [[nodiscard]] QString includeGuide() const { return isIncluding_ ? words_.includeGuide : QString(); }
    [[nodiscard]] QAbstractItemModel* hosts() { return &rows_; }

    /// Adds the form's server and resets the form; the caller then closes the sheet. Does nothing while canSave is
    /// false.
    Q_INVOKABLE void saveManual();
    /// Empties the form, as Cancel does.
    Q_INVOKABLE void resetForm() { ui_.resetAddServerForm(); }
    /// Adds the host of that row, unless the fleet has it already.
    Q_INVOKABLE void importHost(int row);
    /// Adds the host of that row with its alias as the address, where the row offers that.
    Q_INVOKABLE void importAlias(int row);

Q_SIGNALS:
    void canSaveChanged();
    void importCaptionChanged();
    void includeGuideChanged();

private:
    void updateCanSave();
    void readHosts();
    [[nodiscard]] DetectedHost shown(const SSHConfigHost& host) const;
    void showMeaning(const SSHConfigHost& host);

    ServerStore& store_;
    UIState& ui_;
    const ViewCollaborators& collaborators_;
    const AddServerWords words_;
    QList<SSHConfigHost> hosts_;
    FleetIndex fleet_{{}};
    DetectedHostModel rows_;
    AliasMeanings meanings_;
    OncePerTurn readHostsSoon_;
    bool canSave_;
    bool isIncluding_ = false;
};

} // namespace tarnwick
