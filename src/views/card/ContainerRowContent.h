#pragma once

#include "ContainerInfo.h"
#include "ContainerMarks.h"
#include "controls/ColorRole.h"

#include <QList>
#include <QString>
#include <QtQmlIntegration>

namespace tarnwick {

/// What one row of a container list shows, and the id of its container.
struct ContainerRowContent {
    Q_GADGET
    QML_VALUE_TYPE(containerRowContent)
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString image MEMBER image)
    Q_PROPERTY(QString status MEMBER status)
    Q_PROPERTY(QString stateWord MEMBER stateWord)
    Q_PROPERTY(tarnwick::ColorRole::Role dotRole MEMBER dotRole)
    Q_PROPERTY(bool shellEnabled MEMBER shellEnabled)
    Q_PROPERTY(QString shellHelp MEMBER shellHelp)
    Q_PROPERTY(QString failure MEMBER failure)
    Q_PROPERTY(QString question MEMBER question)
    Q_PROPERTY(bool restarting MEMBER restarting)
    Q_PROPERTY(bool restartEnabled MEMBER restartEnabled)

public:
    QString id;
    QString name;
    QString image;
    QString status;
    QString stateWord; ///< the dot's meaning, for screen readers
    ColorRole::Role dotRole = ColorRole::Role::Red;
    bool shellEnabled = false;
    QString shellHelp;
    QString failure;         ///< why the latest action on it failed, in place of the image
    QString question;        ///< asked by the row, in place of all else
    bool restarting = false; ///< a progress indicator takes the restart button's place
    bool restartEnabled = true;

    friend bool operator==(const ContainerRowContent&, const ContainerRowContent&) = default;
};

[[nodiscard]] ContainerRowContent containerRowContent(const ContainerInfo& container, const ContainerMarks& marks);

} // namespace tarnwick
