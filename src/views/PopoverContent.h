#pragma once

#include "FleetFilter.h"
#include "Instant.h"
#include "SharedCaptions.h"
#include "card/CardWords.h"
#include "controls/ColorRole.h"

#include <QList>
#include <QLocale>
#include <QString>
#include <QUrl>
#include <QtQmlIntegration>

#include <chrono>
#include <optional>

namespace tarnwick {

/// A link in the footer.
struct FooterLink {
    Q_GADGET
    QML_VALUE_TYPE(footerLink)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString caption MEMBER caption)
    Q_PROPERTY(QString help MEMBER help)
    Q_PROPERTY(QUrl address MEMBER address)
    Q_PROPERTY(bool isEmphasized MEMBER isEmphasized)

public:
    QString symbol;
    QString caption;
    QString help;
    QUrl address;
    bool isEmphasized = false;
};

/// One group of a large fleet, in the head: how many servers it has. Pressed, it shows these alone.
struct FleetCount {
    Q_GADGET
    QML_VALUE_TYPE(fleetCount)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(tarnwick::ColorRole::Role role MEMBER role)
    Q_PROPERTY(bool isChosen MEMBER isChosen)
    Q_PROPERTY(bool isEnabled MEMBER isEnabled)

public:
    QString symbol;
    QString text; ///< such as "3 offline"
    ColorRole::Role role = ColorRole::Role::Secondary;
    bool isChosen = false;
    bool isEnabled = false; ///< it has servers, or is chosen

    friend bool operator==(const FleetCount&, const FleetCount&) = default;
};

/// The popover's fixed texts.
struct PopoverWords {
    Q_GADGET
    QML_VALUE_TYPE(popoverWords)
    Q_PROPERTY(QString product MEMBER product)
    Q_PROPERTY(QString refresh MEMBER refresh)
    Q_PROPERTY(QString add MEMBER add)
    Q_PROPERTY(QString hardware MEMBER hardware)
    Q_PROPERTY(QString settings MEMBER settings)
    Q_PROPERTY(QString servers MEMBER servers)
    Q_PROPERTY(QString offline MEMBER offline)
    Q_PROPERTY(QString noServers MEMBER noServers)
    Q_PROPERTY(QString howToAdd MEMBER howToAdd)
    Q_PROPERTY(QString addFirst MEMBER addFirst)
    Q_PROPERTY(QString find MEMBER find)
    Q_PROPERTY(QString howToFind MEMBER howToFind)
    Q_PROPERTY(QString stopFinding MEMBER stopFinding)
    Q_PROPERTY(QString counts MEMBER counts)
    Q_PROPERTY(QString showGroup MEMBER showGroup)
    Q_PROPERTY(QString showAll MEMBER showAll)

public:
    QString product = SharedCaptions::product.toString();
    QString refresh = QStringLiteral("Refresh All Servers");
    QString add = SharedCaptions::addServer.toString();
    QString hardware = CardWords().hardware;
    QString settings = QStringLiteral("Settings");
    QString servers = QStringLiteral("Servers");
    QString offline = QStringLiteral("This computer is offline");
    QString noServers = QStringLiteral("No Servers Configured");
    QString howToAdd = QStringLiteral("Click the + button to add a remote server or import your ~/.ssh/config.");
    QString addFirst = QStringLiteral("Add First Server");
    QString find = QStringLiteral("Find servers");
    QString howToFind = QStringLiteral("Type to find");
    QString stopFinding = QStringLiteral("Show all servers (Escape)");
    QString counts = QStringLiteral("Servers by state");
    QString showGroup = QStringLiteral("Show these alone");
    QString showAll = QStringLiteral("Show all servers");
};

/// What the popover shows around its cards.
struct PopoverContent {
    Q_GADGET
    QML_VALUE_TYPE(popoverContent)
    Q_PROPERTY(bool isRefreshing MEMBER isRefreshing)
    Q_PROPERTY(bool isEmpty MEMBER isEmpty)
    Q_PROPERTY(bool isOffline MEMBER isOffline)
    Q_PROPERTY(QString updatedText MEMBER updatedText)
    Q_PROPERTY(QString slowText MEMBER slowText)
    Q_PROPERTY(int countCount READ countCount)
    Q_PROPERTY(bool isFiltered MEMBER isFiltered)
    Q_PROPERTY(QString foundText MEMBER foundText)
    Q_PROPERTY(QString nothingFoundText MEMBER nothingFoundText)

public:
    bool isRefreshing = false; ///< the refresh button is disabled and shows progress
    bool isEmpty = true;       ///< no servers: a prompt takes the place of the list
    bool isOffline = false;    ///< a line above the cards says so
    QString updatedText;       ///< empty before the first full refresh has ended
    QString slowText;          ///< in the foot; empty while the refreshes keep up with their interval
    QList<FleetCount> counts;  ///< in the order of fleetGroups; none of a small fleet
    bool isFiltered = false;
    QString foundText;        ///< such as "3 of 300"; empty while all are shown
    QString nothingFoundText; ///< in place of the cards when none is found

    [[nodiscard]] int countCount() const { return static_cast<int>(counts.size()); }
    Q_INVOKABLE [[nodiscard]] tarnwick::FleetCount count(int index) const { return counts.value(index); }

    friend bool operator==(const PopoverContent&, const PopoverContent&) = default;
};

/// "Updated " and the time of day, with seconds, in the locale's standard style; empty before the first refresh.
[[nodiscard]] QString updatedText(const std::optional<Instant>& lastRefreshedAll, const QLocale& locale);
/// Says that a full refresh takes longer than the interval, and what helps; empty when it does not.
[[nodiscard]] QString slowText(std::chrono::nanoseconds cycleTime, std::chrono::seconds interval,
                               bool sharesConnections);
[[nodiscard]] FleetCount fleetCountContent(FleetGroup group, int count, bool isChosen);
/// Says what no server matches.
[[nodiscard]] QString nothingFoundText(const FleetFilter& filter);
/// The footer's links; one whose address is not a valid URL is left out.
[[nodiscard]] QList<FooterLink> footerLinks();

} // namespace tarnwick
