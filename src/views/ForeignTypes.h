#pragma once

#include "MenuBarItem.h"
#include "UIState.h"

#include <QUuid>
#include <QtQml>

namespace tarnwick {

/// Types of other libraries that QML passes on or binds to; they themselves know nothing of views.
struct ForeignUIState {
    Q_GADGET
    QML_FOREIGN(tarnwick::UIState)
    QML_NAMED_ELEMENT(UIState)
    QML_UNCREATABLE("There is one, and the program owns it")
};

struct ForeignUuid {
    Q_GADGET
    QML_FOREIGN(QUuid)
    QML_ANONYMOUS
};

namespace ForeignEnums {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(tarnwick)
QML_NAMED_ELEMENT(Pins)
} // namespace ForeignEnums

} // namespace tarnwick
