#include "Libxcb.h"

#include <QLibrary>

#include <optional>

namespace tarnwick {

namespace {

std::optional<Libxcb> load() {
    QLibrary library(QStringLiteral("xcb"), 1);
    Libxcb calls;
    const auto find = [&library]<typename Function>(const char* name, Function& function) {
        function = reinterpret_cast<Function>(library.resolve(name));
        return function != nullptr;
    };
    const bool isWhole =
        find("xcb_connect", calls.connect) && find("xcb_connection_has_error", calls.connectionHasError) &&
        find("xcb_disconnect", calls.disconnect) && find("xcb_intern_atom", calls.internAtom) &&
        find("xcb_intern_atom_reply", calls.internAtomReply) && find("xcb_get_selection_owner", calls.selectionOwner) &&
        find("xcb_get_selection_owner_reply", calls.selectionOwnerReply) && find("xcb_get_setup", calls.setup) &&
        find("xcb_setup_roots_iterator", calls.roots) && find("xcb_get_extension_data", calls.extensionData) &&
        find("xcb_get_property", calls.property) && find("xcb_get_property_reply", calls.propertyReply) &&
        find("xcb_get_property_value", calls.propertyValue) &&
        find("xcb_get_property_value_length", calls.propertyValueLength) &&
        find("xcb_change_property", calls.changeProperty) &&
        find("xcb_change_window_attributes", calls.changeWindowAttributes) &&
        find("xcb_send_request", calls.sendRequest) && find("xcb_flush", calls.flush);
    return isWhole ? std::optional(calls) : std::nullopt;
}

} // namespace

const Libxcb* Libxcb::find() {
    static const std::optional<Libxcb> found = load();
    return found ? &*found : nullptr;
}

} // namespace tarnwick
