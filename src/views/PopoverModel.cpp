#include "PopoverModel.h"

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
    connect(&store, &ServerStore::isOfflineChanged, this, &PopoverModel::update);
    // isEmpty follows the rows, which change later than the store: once per turn of the event loop.
    connect(&servers_, &QAbstractItemModel::rowsInserted, this, &PopoverModel::update);
    connect(&servers_, &QAbstractItemModel::rowsRemoved, this, &PopoverModel::update);
}

PopoverContent PopoverModel::publishedContent() const {
    return {.isRefreshing = store_.isRefreshing(),
            .isEmpty = servers_.rowCount() == 0,
            .isOffline = store_.isOffline(),
            .updatedText = updatedText(store_.lastRefreshedAll(), QLocale::system())};
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

void PopoverModel::refreshAll() {
    store_.refreshAll();
}

void PopoverModel::open(const QUrl& address) {
    collaborators_.openAddress(address);
}

} // namespace tarnwick
