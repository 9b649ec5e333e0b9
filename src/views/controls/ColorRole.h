#pragma once

#include <QObject>
#include <QtQmlIntegration>

/// The colours that content decides on; Theme gives each its value in light and in dark mode. Content publishes them
/// as properties of this type.
namespace tarnwick::ColorRole {
Q_NAMESPACE
QML_NAMED_ELEMENT(ColorRole)

enum class Role { Primary, Secondary, Tertiary, Gray, Blue, Green, Orange, Red, Purple, Pink };
Q_ENUM_NS(Role)

} // namespace tarnwick::ColorRole
