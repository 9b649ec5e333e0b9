#pragma once

#include "SSHAlias.h"
#include "Server.h"
#include "SharedCaptions.h"
#include "SystemWords.h"
#include "UIState.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QtQmlIntegration>

namespace tarnwick {

/// One host of the user's ssh configuration, as the import list shows it.
struct DetectedHost {
    Q_GADGET
    QML_VALUE_TYPE(detectedHost)
    Q_PROPERTY(QString alias MEMBER alias)
    Q_PROPERTY(QString address MEMBER address)
    Q_PROPERTY(QString keyText MEMBER keyText)
    Q_PROPERTY(QString hint MEMBER hint)
    Q_PROPERTY(QString description MEMBER description)
    Q_PROPERTY(QString addAlias MEMBER addAlias)
    Q_PROPERTY(bool isAdded MEMBER isAdded)

public:
    QString alias;
    QString address;     ///< user, "@", host name, ":" and port
    QString keyText;     ///< empty when the host has no key file
    QString hint;        ///< what an import by address loses; empty when that is nothing
    QString addAlias;    ///< the button that adds the host by its alias instead; comes with the hint
    QString description; ///< the address and the hint, for screen readers
    bool isAdded = false;

    friend bool operator==(const DetectedHost&, const DetectedHost&) = default;
};

[[nodiscard]] DetectedHost detectedHost(const SSHConfigHost& host, bool isAdded, const SSHAliasMeaning& meaning = {});

/// The names and addresses of a fleet's servers, to find in constant time whether the fleet has a detected host.
class FleetIndex {
public:
    explicit FleetIndex(const QList<Server>& servers);
    /// Whether a server has the host's address, or exactly its alias as a name.
    [[nodiscard]] bool contains(const SSHConfigHost& host) const;
    /// Whether a server has the host's name for ssh as its address, so that all that ssh knows of it applies.
    [[nodiscard]] bool reachesByAlias(const SSHConfigHost& host) const;

private:
    QSet<QString> hosts_;
    QSet<QString> names_;
};

/// The sheet's fixed texts. In the form, a field has a label, a prompt while it is empty and, below it, a caption.
struct AddServerWords {
    Q_GADGET
    QML_VALUE_TYPE(addServerWords)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString close MEMBER close)
    Q_PROPERTY(QString manualTab MEMBER manualTab)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString namePrompt MEMBER namePrompt)
    Q_PROPERTY(QString nameCaption MEMBER nameCaption)
    Q_PROPERTY(QString host MEMBER host)
    Q_PROPERTY(QString hostPrompt MEMBER hostPrompt)
    Q_PROPERTY(QString port MEMBER port)
    Q_PROPERTY(QString portPrompt MEMBER portPrompt)
    Q_PROPERTY(QString user MEMBER user)
    Q_PROPERTY(QString userPrompt MEMBER userPrompt)
    Q_PROPERTY(QString userCaption MEMBER userCaption)
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString keyPrompt MEMBER keyPrompt)
    Q_PROPERTY(QString keyCaption MEMBER keyCaption)
    Q_PROPERTY(QString docker MEMBER docker)
    Q_PROPERTY(QString dockerGuide MEMBER dockerGuide)
    Q_PROPERTY(QString cancel MEMBER cancel)
    Q_PROPERTY(QString save MEMBER save)
    Q_PROPERTY(QString importGuide MEMBER importGuide)
    Q_PROPERTY(QString includeGuide MEMBER includeGuide)
    Q_PROPERTY(QString noHosts MEMBER noHosts)
    Q_PROPERTY(QString added MEMBER added)
    Q_PROPERTY(QString importHost MEMBER importHost)

public:
    QString title = SharedCaptions::addServer.toString();
    QString close = QStringLiteral("Close");
    QString manualTab = QStringLiteral("Manual Entry");
    QString name = QStringLiteral("Server Name");
    QString namePrompt = QStringLiteral("e.g. Production VPS, Hetzner Web, Home Server");
    QString nameCaption;
    QString host = QStringLiteral("Hostname or IP Address");
    QString hostPrompt = QStringLiteral("e.g. 192.0.2.10 or server.example.com");
    QString port = QStringLiteral("SSH Port");
    QString portPrompt = QStringLiteral("22");
    QString user = QStringLiteral("SSH User");
    QString userPrompt = QStringLiteral("root");
    QString userCaption = QStringLiteral("Default: root");
    QString key = QStringLiteral("SSH Key Path (Optional)");
    QString keyPrompt = QStringLiteral("~/.ssh/id_ed25519 (leave blank for ssh-agent)");
    QString keyCaption;
    QString docker = QStringLiteral("Monitor Docker Containers");
    QString dockerGuide =
        QStringLiteral("Discovers running/stopped Docker containers and enables 1-click remote container restarts.");
    QString cancel = QStringLiteral("Cancel");
    QString save = QStringLiteral("Save Server");
    QString importGuide = QStringLiteral("Select a host from your local ~/.ssh/config to import automatically:");
    QString includeGuide =
        QStringLiteral("Hosts of included files are not listed: add them by hand, with their alias as the host.");
    QString noHosts = QStringLiteral("No configured hosts found in ~/.ssh/config");
    QString added = QStringLiteral("Added");
    QString importHost = QStringLiteral("Import");
};

[[nodiscard]] AddServerWords addServerWords(const SystemWords& words);
/// "Import from ~/.ssh/config (3)".
[[nodiscard]] QString importCaption(qsizetype hostCount);

/// Whether the form's name and host hold more than spaces and tabs.
[[nodiscard]] bool canSaveForm(const UIState& form);
/// A new server from the form, blanks trimmed: "root" for an empty user, 22 for a port that is no decimal integer.
[[nodiscard]] Server serverFromForm(const UIState& form);
/// A new server from a detected host, with containers listed.
[[nodiscard]] Server serverFromHost(const SSHConfigHost& host);

} // namespace tarnwick
