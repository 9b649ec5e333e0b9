#include "ServerStore.h"

#include "AlertRound.h"
#include "Merge.h"

#include <QDir>
#include <QFutureWatcher>
#include <QPromise>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

QString ServerStore::standardFolder() {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    // Qt takes a relative $XDG_DATA_HOME, which is to be ignored.
    return (QDir::isAbsolutePath(data) ? data : QDir::homePath() + u"/.local/share"_s) + u"/Tarnwick"_s;
}

/// A full refresh that is running.
struct ServerStore::Cycle {
    Cycle(const AlertRound& round, std::chrono::nanoseconds now) : alerts(round), begun(now) {}

    AlertRound alerts;
    const std::chrono::nanoseconds begun;
    QPromise<void> promise;
    QList<Server> waiting;    ///< probes to launch in later turns of the event loop
    qsizetype unfinished = 0; ///< waiting probes and running ones
};

ServerStore::ServerStore(StoreCollaborators collaborators, QObject* parent)
    : QObject(parent)
    , collaborators_(std::move(collaborators))
    , role_(collaborators_.role)
    , refreshTimer_(this)
    , saver_(collaborators_.folder, {.state =
                                         [this] {
                                             return StoredState{servers_, settings_};
                                         },
                                     .clock = collaborators_.clock,
                                     .adopt =
                                         [this](const StoredState& asked, const StoredState& found) {
                                             adopt(asked, found);
                                         }}) {
    refreshTimer_.setTimerType(Qt::PreciseTimer);
    connect(&refreshTimer_, &QTimer::timeout, this, &ServerStore::refreshAll);

    StoredState stored = saver_.load(); // nothing can be shown before this
    servers_ = std::move(stored.servers);
    trends_.follow(servers_);
    settings_ = stored.settings;
    setupTimer();
    if (role_ == Role::leader)
        lead();
}

ServerStore::~ServerStore() {
    blockSignals(true); // the last save may still take something in, and nobody must ask for it now
}

template <typename Change, typename Signal, typename... Arguments>
void ServerStore::publish(const Change& change, Signal changed, const Arguments&... arguments) {
    Q_EMIT objectWillChange();
    change();
    Q_EMIT(this->*changed)(arguments...);
}

// ---- Loading and saving

void ServerStore::lead() {
    if (servers_.isEmpty())
        seedDefaults();
    QMetaObject::invokeMethod(
        this, [this] { refreshAll(); }, Qt::QueuedConnection);
}

void ServerStore::setRole(Role role) {
    if (role == role_)
        return;
    if (role == Role::follower) {
        save();
        finishSaving();
        role_ = role;
        return;
    }
    saver_.look();
    finishSaving();
    role_ = role;
    save(); // what was edited meanwhile
    lead();
}

void ServerStore::seedDefaults() {
    Server local;
    local.id = QUuid::createUuid();
    local.name = collaborators_.computerName().value_or(u"Local Machine"_s);
    local.host = u"localhost"_s;
    local.user = u"root"_s;
    local.isLocal = true;
    QList<Server> servers{local};
    const QList<SSHConfigHost> hosts = collaborators_.sshHosts();
    for (const SSHConfigHost& host : hosts)
        servers.append(SSHConfigParser::newServer(host));
    setServers(std::move(servers));
    save();
}

void ServerStore::save() {
    if (role_ == Role::leader)
        saver_.save();
}

void ServerStore::adopt(const StoredState& asked, const StoredState& found) {
    // What has changed here since then stays.
    QList<Server> servers = merged(asked.servers, servers_, found.servers);
    if (servers != servers_)
        setServers(std::move(servers));
    const AppSettings settings = merged(asked.settings, settings_, found.settings);
    if (settings != settings_)
        editSettings([&settings](AppSettings& current) { current = settings; }, Saving::later);
}

// ---- Editing

qsizetype ServerStore::indexOf(const QUuid& id) const {
    const auto entry =
        std::find_if(servers_.cbegin(), servers_.cend(), [&id](const Server& server) { return server.id == id; });
    return entry == servers_.cend() ? -1 : entry - servers_.cbegin();
}

const Server* ServerStore::server(const QUuid& id) const {
    const qsizetype index = indexOf(id);
    return index < 0 ? nullptr : &servers_.at(index);
}

void ServerStore::setServers(QList<Server> servers) {
    const auto replace = [&] {
        servers_ = std::move(servers);
        trends_.follow(servers_);
    };
    publish(replace, &ServerStore::serversChanged);
}

void ServerStore::editSettings(const std::function<void(AppSettings&)>& change, Saving saving) {
    const qint64 interval = settings_.refreshIntervalSeconds;
    publish([&] { change(settings_); }, &ServerStore::settingsChanged);
    if (settings_.refreshIntervalSeconds != interval)
        setupTimer();
    if (saving == Saving::now)
        save();
}

void ServerStore::addServer(const Server& server) {
    publish([&] { servers_.append(server); }, &ServerStore::serversChanged);
    save();
    QMetaObject::invokeMethod(
        this, [this, server] { refreshServer(server); }, Qt::QueuedConnection);
}

void ServerStore::updateServer(const Server& server) {
    const qsizetype index = indexOf(server.id);
    if (index < 0)
        return;
    publish([&] { servers_[index] = server; }, &ServerStore::serverChanged, server.id);
    save();
}

void ServerStore::removeServer(const QUuid& id) {
    const auto hasId = [id](const Server& server) {
        return server.id == id;
    };
    const auto remove = [&] {
        servers_.removeIf(hasId);
        trends_.follow(servers_);
    };
    if (std::ranges::any_of(servers_, hasId))
        publish(remove, &ServerStore::serversChanged);
    save();
}

void ServerStore::moveServerUp(const QUuid& id) {
    const qsizetype index = indexOf(id);
    if (moveServer(index, index - 1))
        save();
}

void ServerStore::moveServerDown(const QUuid& id) {
    const qsizetype index = indexOf(id);
    if (moveServer(index, index + 1))
        save();
}

bool ServerStore::moveServer(qsizetype from, qsizetype to) {
    const qsizetype size = servers_.size();
    if (from == to || from < 0 || from >= size || to < 0 || to >= size)
        return false;
    publish([&] { servers_.move(from, to); }, &ServerStore::serversChanged);
    return true;
}

// ---- Refreshing

std::chrono::seconds ServerStore::refreshInterval() const {
    constexpr qint64 shortest = 10;
    // A QTimer cannot count further than 24 days.
    constexpr qint64 longest = std::numeric_limits<int>::max() / 1000;
    return std::chrono::seconds(std::clamp(settings_.refreshIntervalSeconds, shortest, longest));
}

void ServerStore::setupTimer() {
    refreshTimer_.start(refreshInterval());
}

QFuture<void> ServerStore::refreshAll() {
    if (role_ == Role::follower)
        saver_.look(); // where the system does not tell of changes
    if (role_ == Role::follower || isRefreshing_)
        return {};
    publish([&] { isRefreshing_ = true; }, &ServerStore::isRefreshingChanged);

    const auto cycle = std::make_shared<Cycle>(AlertRound(collaborators_, settings_), collaborators_.steadyTime());
    cycle->promise.start();
    std::ranges::copy_if(servers_, std::back_inserter(cycle->waiting), &Server::isEnabled);
    cycle->unfinished = cycle->waiting.size();
    QFuture<void> future = cycle->promise.future();
    if (cycle->unfinished == 0)
        end(*cycle);
    else
        launch(cycle);
    return future;
}

void ServerStore::launch(const std::shared_ptr<Cycle>& cycle) {
    // A launch takes some 15 microseconds: a thousand in one turn of the event loop would drop a frame.
    constexpr qsizetype perTurn = 200;
    const QList<Server> batch = cycle->waiting.first(std::min(perTurn, cycle->waiting.size()));
    cycle->waiting.remove(0, batch.size());
    for (const Server& server : batch)
        probe(server, ProcessRequest::Launch::paced, [this, cycle](const Server* applied) {
            if (applied)
                cycle->alerts.postOrHold(*applied);
            if (--cycle->unfinished == 0)
                end(*cycle);
        });
    if (!cycle->waiting.isEmpty())
        QMetaObject::invokeMethod(
            this, [this, cycle] { launch(cycle); }, Qt::QueuedConnection);
}

void ServerStore::end(Cycle& cycle) {
    setOffline(cycle.alerts.end());
    publish(
        [&] {
            lastRefreshedAll_ = collaborators_.clock();
            latestCycleTime_ = collaborators_.steadyTime() - cycle.begun;
        },
        &ServerStore::lastRefreshedAllChanged);
    save();
    publish([&] { isRefreshing_ = false; }, &ServerStore::isRefreshingChanged);
    cycle.promise.finish();
}

QFuture<void> ServerStore::refreshServer(const Server& server) {
    const auto promise = std::make_shared<QPromise<void>>();
    promise->start();
    QFuture<void> future = promise->future();
    probe(server, ProcessRequest::Launch::atOnce, [this, promise](const Server* applied) {
        if (applied) {
            AlertRound(collaborators_, settings_).post(*applied);
            save();
        }
        promise->finish();
    });
    return future;
}

void ServerStore::probe(const Server& server, ProcessRequest::Launch launch,
                        const std::function<void(const Server* applied)>& done) {
    // A watcher and not a continuation, because the store may be destroyed, and the watcher with it, before the probe
    // ends.
    auto* watcher = new QFutureWatcher<ServerMetrics>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, id = server.id, done] {
        watcher->deleteLater();
        // A probe has no result when the application exits before it ends.
        done(watcher->future().resultCount() > 0 ? apply(id, watcher->result()) : nullptr);
    });
    watcher->setFuture(collaborators_.collect(server, {launch, sharedFor()}));
}

std::optional<std::chrono::seconds> ServerStore::sharedFor() const {
    if (!settings_.sharesConnections())
        return std::nullopt;
    // Longer than the next probe takes to come, as a cycle of many hosts lasts, but no longer than that is worth it.
    constexpr std::chrono::seconds longest = 10min;
    return std::min(2 * refreshInterval(), longest);
}

const Server* ServerStore::apply(const QUuid& id, const ServerMetrics& metrics) {
    const qsizetype index = indexOf(id);
    if (index < 0 || role_ == Role::follower)
        return nullptr;
    const bool remoteAnswered = !servers_.at(index).isLocal && !metrics.errorMessage;
    const auto replace = [&] {
        servers_[index].metrics = metrics;
        trends_.note(servers_.at(index));
    };
    publish(replace, &ServerStore::serverChanged, id);
    if (remoteAnswered)
        setOffline(false);
    return server(id);
}

void ServerStore::setOffline(bool offline) {
    if (offline != isOffline_)
        publish([&] { isOffline_ = offline; }, &ServerStore::isOfflineChanged);
}

} // namespace tarnwick
