#pragma once

#include "MenuBarItem.h"
#include "ServerStore.h"
#include "UIState.h"

#include <QtQml>

namespace tarnwick {

/// The store, the UI state and the pins as types of the views' module: they themselves know nothing of views.
struct ForeignServerStore {
    Q_GADGET
    QML_FOREIGN(tarnwick::ServerStore)
    QML_NAMED_ELEMENT(ServerStore)
    QML_UNCREATABLE("There is one, and the program owns it")
};

struct ForeignUIState {
    Q_GADGET
    QML_FOREIGN(tarnwick::UIState)
    QML_NAMED_ELEMENT(UIState)
    QML_UNCREATABLE("There is one, and the program owns it")
};

namespace ForeignEnums {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(tarnwick)
QML_NAMED_ELEMENT(Pins)
} // namespace ForeignEnums

} // namespace tarnwick
