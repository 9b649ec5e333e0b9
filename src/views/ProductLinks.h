#pragma once

#include <QStringView>

/// The product's addresses on the web.
namespace tarnwick::ProductLinks {

inline constexpr QStringView webSite = u"https://tarnwick.example";
inline constexpr QStringView webSiteDomain = u"tarnwick.example";
inline constexpr QStringView donationPage = u"https://ko-fi.com/tarnwick";

} // namespace tarnwick::ProductLinks
