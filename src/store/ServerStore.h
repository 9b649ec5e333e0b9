#pragma once

#include "AppSettings.h"
#include "FleetTrends.h"
#include "Server.h"
#include "StateSaver.h"
#include "StoreCollaborators.h"

#include <QFuture>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace tarnwick {

/// The one owner of the fleet and of the settings, persisted as two JSON files. It refreshes the fleet periodically
/// and raises alerts. A follower does neither and writes nothing: it shows what the leader has saved. Main thread only.
///
/// objectWillChange() is emitted before any published value changes, and the value's own signal after.
class ServerStore : public QObject {
    Q_OBJECT

public:
    /// The start-up sequence: loads or seeds the fleet, starts the timer and, from the event loop, a first refresh. A
    /// follower only loads.
    explicit ServerStore(StoreCollaborators collaborators, QObject* parent = nullptr);
    ~ServerStore() override;

    /// The standard folder of the two files: `Tarnwick` in the user's generic data location.
    [[nodiscard]] static QString standardFolder();

    [[nodiscard]] const QList<Server>& servers() const { return servers_; }
    [[nodiscard]] const AppSettings& settings() const { return settings_; }
    [[nodiscard]] bool isRefreshing() const { return isRefreshing_; }
    /// Whether the latest full refresh found that this computer is offline, see AlertRound::end(), and no remote server
    /// has answered since.
    [[nodiscard]] bool isOffline() const { return isOffline_; }
    /// When the latest full refresh ended; absent until one has.
    [[nodiscard]] std::optional<Instant> lastRefreshedAll() const { return lastRefreshedAll_; }
    /// How long that took; zero until one has ended.
    [[nodiscard]] std::chrono::nanoseconds latestCycleTime() const { return latestCycleTime_; }
    /// The time between two refreshes: the settings', at least 10 seconds.
    [[nodiscard]] std::chrono::seconds refreshInterval() const;
    /// The first entry with that id; null when there is none. Valid until the next change.
    [[nodiscard]] const Server* server(const QUuid& id) const;
    /// The place of that entry in servers(); -1 when there is none.
    [[nodiscard]] qsizetype indexOf(const QUuid& id) const;
    /// What the server's last two hours were like; null while it has no result. Valid until the next change.
    [[nodiscard]] const ServerTrend* trend(const QUuid& id) const { return trends_.trend(id); }

    /// Replaces the published list (a live reorder). Does not save.
    void setServers(QList<Server> servers);
    /// A leader that becomes a follower saves first, and waits for it as finishSaving() does. A follower that becomes
    /// the leader takes in what the old one has saved and begins as at start.
    void setRole(Role role);

    enum class Saving {
        now,
        later, ///< by the next save() of anything else
    };
    /// Applies `change` to the published settings, between objectWillChange() and settingsChanged(). Restarts the timer
    /// when the refresh interval differs afterwards.
    void editSettings(const std::function<void(AppSettings& settings)>& change, Saving saving = Saving::now);

    /// Appends, saves, and starts a refresh of the new entry.
    void addServer(const Server& server);
    /// Replaces the entry with the same id and saves; nothing when there is none.
    void updateServer(const Server& server);
    /// Removes every entry with that id; saves always.
    void removeServer(const QUuid& id);
    /// Swaps with the entry before, and saves; nothing when first or unknown.
    void moveServerUp(const QUuid& id);
    /// Swaps with the entry after, and saves; nothing when last or unknown.
    void moveServerDown(const QUuid& id);
    /// Moves the entry at `from` so that its index is `to`. Does not save: a live drag. False, and nothing happens,
    /// when the two are equal or one is outside of the list.
    bool moveServer(qsizetype from, qsizetype to);
    /// Soon, in a thread of its own: merges in what others have written to the two files, publishes that, and writes
    /// both as they are by then, each atomically. When the first one fails the second is not written; nothing is
    /// reported. A follower writes nothing.
    void save();
    /// Waits until all that was to be saved is, at most StateSaver::patience. False when it gave up.
    bool finishSaving() { return saver_.finish(); }

    /// Starts the periodic refresh, or restarts it: the interval begins now.
    void setupTimer();
    /// Probes every enabled server, in the order of the list and at the computer's own pace, and applies each result as
    /// it arrives; saves at the end. Dropped while one runs: the future is then cancelled, else it finishes when the
    /// cycle has ended.
    QFuture<void> refreshAll();
    /// Probes one server at once, paused or not; applies and saves the result unless the server is gone by then.
    QFuture<void> refreshServer(const Server& server);

Q_SIGNALS:
    void objectWillChange();
    void serversChanged();               ///< the list: entries added, removed, moved, or replaced as a whole
    void serverChanged(const QUuid& id); ///< one entry's fields; its place in the list is the same
    void settingsChanged();
    void isRefreshingChanged();
    void lastRefreshedAllChanged();
    void isOfflineChanged();

private:
    struct Cycle;

    void lead();
    void seedDefaults();
    /// Publishes what others have written; see StateSaver::Client.
    void adopt(const StoredState& asked, const StoredState& found);
    /// Makes a change of published values: objectWillChange(), `change`, then the signal `changed` with `arguments`.
    template <typename Change, typename Signal, typename... Arguments>
    void publish(const Change& change, Signal changed, const Arguments&... arguments);
    void launch(const std::shared_ptr<Cycle>& cycle);
    void end(Cycle& cycle);
    /// Probes one server and applies the result; `done` gets the entry with it, or null when no entry has that id any
    /// more.
    void probe(const Server& server, ProcessRequest::Launch launch,
               const std::function<void(const Server* applied)>& done);
    const Server* apply(const QUuid& id, const ServerMetrics& metrics);
    void setOffline(bool offline);
    /// As ProbeManner has it.
    [[nodiscard]] std::optional<std::chrono::seconds> sharedFor() const;

    StoreCollaborators collaborators_;
    QList<Server> servers_;
    FleetTrends trends_; ///< of servers_, by the time that they are published
    AppSettings settings_;
    Role role_;
    bool isRefreshing_ = false;
    bool isOffline_ = false;
    std::optional<Instant> lastRefreshedAll_;
    std::chrono::nanoseconds latestCycleTime_{0};
    QTimer refreshTimer_;
    StateSaver saver_; ///< the last, because its destructor asks for the state
};

} // namespace tarnwick
