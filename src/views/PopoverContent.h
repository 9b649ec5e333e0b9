#pragma once

#include "FleetFilter.h"
#include "Instant.h"
#include "SharedCaptions.h"
#include "card/CardWords.h"

#include <QList>
#include <QLocale>
#include <QString>
#include <QUrl>
#include <QtQmlIntegration>

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
};

/// What the popover shows around its cards.
struct PopoverContent {
    Q_GADGET
    QML_VALUE_TYPE(popoverContent)
    Q_PROPERTY(bool isRefreshing MEMBER isRefreshing)
    Q_PROPERTY(bool isEmpty MEMBER isEmpty)
    Q_PROPERTY(bool isOffline MEMBER isOffline)
    Q_PROPERTY(QString updatedText MEMBER updatedText)

public:
    bool isRefreshing = false; ///< the refresh button is disabled and shows progress
    bool isEmpty = true;       ///< no servers: a prompt takes the place of the list
    bool isOffline = false;    ///< a line above the cards says so
    QString updatedText;       ///< empty before the first full refresh has ended

    friend bool operator==(const PopoverContent&, const PopoverContent&) = default;
};

/// "Updated " and the time of day, with seconds, in the locale's standard style; empty before the first refresh.
[[nodiscard]] QString updatedText(const std::optional<Instant>& lastRefreshedAll, const QLocale& locale);
/// The footer's links; one whose address is not a valid URL is left out.
[[nodiscard]] QList<FooterLink> footerLinks();

} // namespace tarnwick
