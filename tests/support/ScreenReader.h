#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QList>
#include <QRect>
#include <QString>
#include <QVariant>

#include <utility>

namespace tarnwick {

/// The program's windows as a screen reader finds them: which elements there are, and where. A question waits for the
/// program's answer, but not for an element to appear.
class ScreenReader {
public:
    explicit ScreenReader(const QDBusConnection& session = QDBusConnection::sessionBus());
    ~ScreenReader();

    [[nodiscard]] bool isConnected() const { return bus_.isConnected(); }
    /// The places on the screen of all shown elements of that name, from top to bottom.
    [[nodiscard]] QList<QRect> places(const QString& name) const;
    /// What is read out after the name of the first element of that name; empty when there is none.
    [[nodiscard]] QString description(const QString& name) const;

private:
    using Element = std::pair<QString, QDBusObjectPath>; ///< of this service

    [[nodiscard]] QVariant ask(const Element& element, const QString& interface, const QString& method,
                               const QVariantList& arguments = {}) const;
    [[nodiscard]] QString text(const Element& element, const QString& property) const;
    /// The shown elements of that name: this one, and all below it.
    [[nodiscard]] QList<Element> elements(const QString& name, const Element& from) const;
    [[nodiscard]] bool isShown(const Element& element) const;

    QDBusConnection bus_{QStringLiteral("accessibility")};
};

} // namespace tarnwick
