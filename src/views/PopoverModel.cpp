#include "PopoverModel.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

PopoverModel::PopoverModel(ServerStore& store, UIState& ui, ViewCollaborators collaborators, QObject* parent)
    : QObject(parent)
    , store_(store)
    , ui_(ui)
    , collaborators_(std::move(collaborators))
    , servers_(store, ui, collaborators_.computer)
    , cardActions_(store, ui, collaborators_)
    , content_(publishedContent()) {
    connect(&store, &ServerStore::isRefreshingChanged, this, &PopoverModel::update);
    connect(&store, &ServerStore::lastRefreshedAllChanged, this, &PopoverModel::update);
    connect(&store, &ServerStore::settingsChanged, this, &PopoverModel::update);
    connect(&store, &ServerStore::isOfflineChanged, this, &PopoverModel::update);
    // What the rows decide follows them. They change later than the store: once per turn of the event loop.
    connect(&servers_, &ServerListModel::updated, this, &PopoverModel::update);
}

PopoverContent PopoverModel::publishedContent() const {
    PopoverContent content;
    content.isRefreshing = store_.isRefreshing();
    content.isEmpty = servers_.fleetSize() == 0;
    content.isOffline = store_.isOffline();
    content.updatedText = updatedText(store_.lastRefreshedAll(), QLocale::system());
    content.slowText =
        slowText(store_.latestCycleTime(), store_.refreshInterval(), store_.settings().sharesConnections());
    const FleetFilter& filter = servers_.filter();
    if (servers_.isCounted())
        for (const FleetGroup group : fleetGroups)
            content.counts += fleetCountContent(group, servers_.count(group), filter.group() == group);
    if (filter.isEmpty())
        return content;
    content.isFiltered = true;
    content.foundText = QString::number(servers_.rowCount()) + u" of "_s + QString::number(servers_.fleetSize());
    if (servers_.rowCount() == 0)
        content.nothingFoundText = nothingFoundText(filter);
    return content;
}

void PopoverModel::update() {
    PopoverContent content = publishedContent();
    if (content == content_)
        return;
    content_ = std::move(content);
    Q_EMIT contentChanged();
}

SettingsModel* PopoverModel::settingsModel(QObject* sheet) {
    return new SettingsModel(store_, ui_, collaborators_, sheet);
}

AddServerModel* PopoverModel::addServerModel(QObject* sheet) {
    return new AddServerModel(store_, ui_, collaborators_, sheet);
}

MacInfoModel* PopoverModel::macInfoModel(QObject* sheet) {
    return new MacInfoModel(store_, ui_, collaborators_, sheet);
}

OnboardingModel* PopoverModel::onboardingModel(QObject* sheet) {
    return new OnboardingModel(store_, ui_, collaborators_, sheet);
}

void PopoverModel::find(const QString& text) {
    servers_.setFilter(FleetFilter(text, servers_.filter().group()));
}

void PopoverModel::toggleGroup(int index) {
    const FleetFilter& filter = servers_.filter();
    const FleetGroup group = fleetGroups.at(static_cast<size_t>(index));
    servers_.setFilter(FleetFilter(filter.text(), filter.group() == group ? std::nullopt : std::optional(group)));
}

void PopoverModel::showAll() {
    servers_.setFilter(FleetFilter());
}

void PopoverModel::openFound() {
    if (!servers_.filter().isEmpty() && servers_.rowCount() == 1)
        cardActions_.openSSH(servers_.id(0));
}

void PopoverModel::close() {
    if (ui_.askedContainer())
        cardActions_.cancelStop();
    else
        Q_EMIT closeRequested();
}

void PopoverModel::refreshAll() {
    store_.refreshAll();
}

void PopoverModel::open(const QUrl& address) {
    collaborators_.openAddress(address);
}

} // namespace tarnwick
