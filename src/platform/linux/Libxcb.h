#pragma once

#include <xcb/xcb.h>
#include <xcb/xcbext.h>

namespace tarnwick {

/// The functions of libxcb that this program calls. The library is looked up at run time: Qt's X11 support brings it,
/// and a computer without X11 does not need it.
struct Libxcb {
    decltype(&xcb_connect) connect = nullptr;
    decltype(&xcb_connection_has_error) connectionHasError = nullptr;
    decltype(&xcb_disconnect) disconnect = nullptr;
    decltype(&xcb_intern_atom) internAtom = nullptr;
    decltype(&xcb_intern_atom_reply) internAtomReply = nullptr;
    decltype(&xcb_get_selection_owner) selectionOwner = nullptr;
    decltype(&xcb_get_selection_owner_reply) selectionOwnerReply = nullptr;
    decltype(&xcb_get_setup) setup = nullptr;
    decltype(&xcb_setup_roots_iterator) roots = nullptr;
    decltype(&xcb_get_extension_data) extensionData = nullptr;
    decltype(&xcb_get_property) property = nullptr;
    decltype(&xcb_get_property_reply) propertyReply = nullptr;
    decltype(&xcb_get_property_value) propertyValue = nullptr;
    decltype(&xcb_get_property_value_length) propertyValueLength = nullptr;
    decltype(&xcb_change_property) changeProperty = nullptr;
    decltype(&xcb_change_window_attributes) changeWindowAttributes = nullptr;
    decltype(&xcb_send_request) sendRequest = nullptr;
    decltype(&xcb_flush) flush = nullptr;

    /// Null where the library is missing. Any thread.
    [[nodiscard]] static const Libxcb* find();
};

} // namespace tarnwick
