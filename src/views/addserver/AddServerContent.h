#pragma once

#include "SSHConfigParser.h"
#include "Server.h"
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
    Q_PROPERTY(bool isAdded MEMBER isAdded)

public:
    QString alias;
    QString address; ///< user, "@", host name, ":" and port
    QString keyText; ///< empty when the host has no key file
    bool isAdded = false;

    friend bool operator==(const DetectedHost&, const DetectedHost&) = default;
};

[[nodiscard]] DetectedHost detectedHost(const SSHConfigHost& host, bool isAdded);

/// The names and addresses of a fleet's servers, to find in constant time whether the fleet has a detected host.
class FleetIndex {
public:
    explicit FleetIndex(const QList<Server>& servers);
    /// Whether a server has the host's address, or exactly its alias as a name.
    [[nodiscard]] bool contains(const SSHConfigHost& host) const;

private:
    QSet<QString> hosts_;
    QSet<QString> names_;
};

/// The captions below the form's fields for the name and the key.
[[nodiscard]] QString nameCaption();
[[nodiscard]] QString keyCaption();
/// "Import from ~/.ssh/config (3)".
[[nodiscard]] QString importCaption(qsizetype hostCount);

/// Whether the form's name and host hold more than spaces and tabs.
[[nodiscard]] bool canSaveForm(const UIState& form);
/// A new server from the form, blanks trimmed: "root" for an empty user, 22 for a port that is no decimal integer.
[[nodiscard]] Server serverFromForm(const UIState& form);
/// A new server from a detected host, with containers listed.
[[nodiscard]] Server serverFromHost(const SSHConfigHost& host);

} // namespace tarnwick
