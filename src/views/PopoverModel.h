#pragma once

#include "PopoverContent.h"
#include "ServerListModel.h"
#include "addserver/AddServerModel.h"
#include "card/CardActions.h"
#include "computer/MacInfoModel.h"
#include "settings/SettingsModel.h"
#include "tour/OnboardingModel.h"

#include <QObject>
#include <QtQmlIntegration>

namespace tarnwick {

/// The popover's main view: what it shows and what it can do.
class PopoverModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Comes with its view")
    Q_PROPERTY(tarnwick::PopoverContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(tarnwick::PopoverWords words READ words CONSTANT)
    Q_PROPERTY(QList<tarnwick::FooterLink> links READ links CONSTANT)
    Q_PROPERTY(tarnwick::ServerListModel* servers READ servers CONSTANT)
    Q_PROPERTY(tarnwick::CardActions* cardActions READ cardActions CONSTANT)

public:
    /// Store and state must outlive the model.
    PopoverModel(ServerStore& store, UIState& ui, ViewCollaborators collaborators, QObject* parent = nullptr);

    [[nodiscard]] const PopoverContent& content() const { return content_; }
    [[nodiscard]] PopoverWords words() const { return {}; }
    [[nodiscard]] QList<FooterLink> links() const { return footerLinks(); }
    [[nodiscard]] ServerListModel* servers() { return &servers_; }
    [[nodiscard]] CardActions* cardActions() { return &cardActions_; }

    /// The model of a sheet that is about to be shown; it belongs to the sheet's item.
    Q_INVOKABLE tarnwick::SettingsModel* settingsModel(QObject* sheet);
    Q_INVOKABLE tarnwick::AddServerModel* addServerModel(QObject* sheet);
    Q_INVOKABLE tarnwick::MacInfoModel* macInfoModel(QObject* sheet);
    Q_INVOKABLE tarnwick::OnboardingModel* onboardingModel(QObject* sheet);

    /// Shows the servers that match the text alone; see FleetFilter.
    Q_INVOKABLE void find(const QString& text);
    /// Shows the servers of that one of fleetGroups alone, or no longer.
    Q_INVOKABLE void toggleGroup(int index);
    Q_INVOKABLE void showAll();
    /// Opens the shell of the server that was looked for, once it is the only one left.
    Q_INVOKABLE void openFound();

    Q_INVOKABLE void refreshAll();
    Q_INVOKABLE void open(const QUrl& address);
    /// Escape: takes back an open question, or else asks for the view to be closed.
    Q_INVOKABLE void close();

Q_SIGNALS:
    void contentChanged();
    void closeRequested();

private:
    [[nodiscard]] PopoverContent publishedContent() const;
    void update();

    ServerStore& store_;
    UIState& ui_;
    const ViewCollaborators collaborators_;
    ServerListModel servers_;
    CardActions cardActions_;
    PopoverContent content_;
};

} // namespace tarnwick
