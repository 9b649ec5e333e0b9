#pragma once

#include "SystemWords.h"

#include <QString>
#include <QtQmlIntegration>

namespace tarnwick {

/// The texts that are the same on every card.
struct CardWords {
    Q_GADGET
    QML_VALUE_TYPE(cardWords)
    Q_PROPERTY(QString paused MEMBER paused)
    Q_PROPERTY(QString drag MEMBER drag)
    Q_PROPERTY(QString hardware MEMBER hardware)
    Q_PROPERTY(QString hardwareRow MEMBER hardwareRow)
    Q_PROPERTY(QString openSSH MEMBER openSSH)
    Q_PROPERTY(QString refresh MEMBER refresh)
    Q_PROPERTY(QString remove MEMBER remove)
    Q_PROPERTY(QString restart MEMBER restart)
    Q_PROPERTY(QString stop MEMBER stop)
    Q_PROPERTY(QString cancel MEMBER cancel)
    Q_PROPERTY(QString pinMenu MEMBER pinMenu)

public:
    QString paused = QStringLiteral("PAUSED");
    QString drag = QStringLiteral("Drag to reorder server");
    QString hardware = QStringLiteral("Hardware Specs & Thermals");
    QString hardwareRow = QStringLiteral("Hardware Specs & Thermal Sensors");
    QString openSSH = QStringLiteral("Open SSH in Terminal");
    QString refresh = QStringLiteral("Refresh this server");
    QString remove = QStringLiteral("Remove server from Tarnwick");
    QString restart = QStringLiteral("Restart container");
    QString stop = QStringLiteral("Stop");
    QString cancel = QStringLiteral("Cancel");
    QString pinMenu;
};

[[nodiscard]] inline CardWords cardWords(const SystemWords& words) {
    return {.pinMenu = QStringLiteral("Pin to %1...").arg(words.barTitle)};
}

} // namespace tarnwick
