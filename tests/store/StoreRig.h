#pragma once

#include "Coding.h"
#include "Files.h"
#include "ServerStore.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QPromise>
#include <QTemporaryDir>

#include <map>
#include <memory>
#include <utility>

namespace tarnwick {

/// A store on a temporary folder; the test answers the probes, sets the clock and sees the alerts.
class StoreRig {
public:
    struct Probe {
        Server server;
        QPromise<ServerMetrics> promise;

        void answer(const ServerMetrics& metrics) {
            promise.addResult(metrics);
            promise.finish();
            QCoreApplication::processEvents();
        }
    };

    QTemporaryDir home;
    QString folder = home.filePath(QStringLiteral("a/b/Tarnwick"));
    Role role = Role::leader;
    Instant now{1000};
    std::chrono::nanoseconds steadyTime{0};
    QList<SSHConfigHost> sshHosts;
    std::optional<QString> computerName;
    std::map<QString, Probe> probes; ///< running or answered, by the server's name; the latest of each
    QStringList probed;              ///< names, in the order of launch; with "!" where it is to be at once
    QStringList alerts;  ///< keys' suffixes, or title and text of one without a key, and whether with sound, as posted
    QStringList claimed; ///< keys of alerts that are not to be repeated
    std::optional<std::chrono::seconds> sharedFor; ///< as the latest probe was told
    bool hasDefaultRoute = true;
    std::unique_ptr<ServerStore> store;

    StoreRig() = default;
    /// With one server for each character, named so.
    explicit StoreRig(QStringView names) { startWith(fleet(names)); }

    /// Constructs the store; its start-up refresh waits in the event loop.
    void start() {
        store = std::make_unique<ServerStore>(StoreCollaborators{
            .collect =
                [this](const Server& server, const ProbeManner& manner) {
                    sharedFor = manner.sharedFor;
                    probed.append(manner.launch == ProcessRequest::Launch::atOnce ? server.name + u'!' : server.name);
                    Probe& probe = probes[server.name] = {server, QPromise<ServerMetrics>()};
                    probe.promise.start();
                    return probe.promise.future();
                },
            .clock = [this] { return now; },
            .steadyTime = [this] { return steadyTime; },
            .claim = [this](const QString& key, Instant) { return (claimed += key).count(key) == 1; },
            .notify =
                [this](const Alert& alert, bool withSound) {
                    alerts.append(
                        (alert.key.isEmpty() ? alert.title + QStringLiteral(": ") + alert.message : alert.key.mid(36)) +
                        (withSound ? QStringLiteral(" loud") : QString()));
                },
            .hasDefaultRoute = [this] { return hasDefaultRoute; },
            .sshHosts = [this] { return sshHosts; },
            .computerName = [this] { return computerName; },
            .folder = folder,
            .role = role,
        });
    }

    /// Constructs a store with these servers, finishes its start-up refresh, and forgets what that recorded.
    void startWith(const QList<Server>& servers) {
        write(QStringLiteral("servers.json"), encodeServers(servers).value());
        start();
        do {
            QCoreApplication::processEvents(); // a large fleet is probed over several turns
            for (auto& [name, probe] : probes)
                if (!probe.promise.future().isFinished())
                    probe.answer(ServerMetrics());
        } while (store->isRefreshing());
        probed.clear();
        alerts.clear();
        claimed.clear();
        store->setServers(servers);
    }

    [[nodiscard]] static Server server(const QString& name) {
        Server server;
        server.id = QUuid::createUuid();
        server.name = name;
        return server;
    }

    /// One server for each character, named so.
    [[nodiscard]] static QList<Server> fleet(QStringView names) {
        QList<Server> servers;
        for (const QChar name : names)
            servers.append(server(name));
        return servers;
    }

    /// As many servers, named 1, 2, 3, …
    [[nodiscard]] static QList<Server> numbered(int count) {
        QList<Server> servers;
        for (int number = 1; number <= count; ++number)
            servers.append(server(QString::number(number)));
        return servers;
    }

    [[nodiscard]] static QStringList namesOf(const QList<Server>& servers) {
        QStringList names;
        for (const Server& server : servers)
            names.append(server.name);
        return names;
    }
    [[nodiscard]] QStringList names() const { return namesOf(store->servers()); }

    [[nodiscard]] QString path(const QString& name) const { return folder + u'/' + name; }

    void write(const QString& name, const QByteArray& content) const {
        if (!writeFile(path(name), content))
            qFatal("cannot write the test's file");
    }

    [[nodiscard]] QByteArray read(const QString& name) const {
        finishSaving();
        return readFile(path(name));
    }

    /// What `servers.json` holds, or another file; empty when it cannot be decoded.
    [[nodiscard]] QList<Server> storedFleet(const QString& name = QStringLiteral("servers.json")) const {
        const auto decoded = decodeServers(read(name));
        const auto* servers = std::get_if<QList<Server>>(&decoded);
        return servers ? *servers : QList<Server>();
    }

    void finishSaving() const {
        const QDeadlineTimer deadline(60'000); // the store itself gives up early, and disks may be slow
        while (store && !store->finishSaving())
            if (deadline.hasExpired())
                qFatal("the store does not save");
    }

    [[nodiscard]] QStringList files() const {
        finishSaving();
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                      QDir::Name);
    }

    /// Whether `operation` writes: both files, or neither.
    template <typename Operation>
    [[nodiscard]] bool saves(Operation operation) const {
        finishSaving();
        QFile::remove(path(QStringLiteral("servers.json")));
        QFile::remove(path(QStringLiteral("settings.json")));
        operation();
        const qsizetype count = files().size();
        if (count == 1)
            qFatal("one file of two was written");
        return count == 2;
    }
};

} // namespace tarnwick
