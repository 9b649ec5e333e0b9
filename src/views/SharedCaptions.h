#pragma once

#include <QStringView>

/// The texts that several views show.
namespace tarnwick::SharedCaptions {

inline constexpr QStringView product = u"Tarnwick";
inline constexpr QStringView addServer = u"Add New Server";
inline constexpr QStringView done = u"Done";
inline constexpr QStringView donate = u"Support Tarnwick on Ko-fi";
inline constexpr QStringView price = u"100% Free";
inline constexpr QStringView welcome = u"Welcome to Tarnwick";

} // namespace tarnwick::SharedCaptions
