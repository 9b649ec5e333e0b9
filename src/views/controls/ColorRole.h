#pragma once

#include <QObject>
#include <QtQmlIntegration>

/// The colours that content decides on; Theme gives each its value in light and in dark mode.
namespace tarnwick::ColorRole {
Q_NAMESPACE
QML_NAMED_ELEMENT(ColorRole)

/// Unscoped, since content hands it to QML as an int: compiled QML of this Qt cannot read enum properties of values.
enum Role { Primary, Secondary, Tertiary, Gray, Blue, Green, Orange, Red, Purple, Pink };
Q_ENUM_NS(Role)

} // namespace tarnwick::ColorRole
