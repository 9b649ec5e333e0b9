#pragma once

#include "MacHardwareCollector.h"
#include "MenuBarItem.h"
#include "Server.h"
#include "controls/ColorRole.h"

#include <QList>
#include <QString>
#include <QUrl>
#include <QtQmlIntegration>

namespace tarnwick {

/// A feature in the introduction.
struct FeatureBullet {
    Q_GADGET
    QML_VALUE_TYPE(featureBullet)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(tarnwick::ColorRole::Role role MEMBER role)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString subtitle MEMBER subtitle)

public:
    QString symbol;
    ColorRole::Role role = ColorRole::Role::Primary;
    QString title;
    QString subtitle;
};

/// One figure of this computer.
struct OnboardingMetric {
    Q_GADGET
    QML_VALUE_TYPE(onboardingMetric)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString value MEMBER value)
    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(tarnwick::ColorRole::Role role MEMBER role)

public:
    QString title;
    QString value;
    QString subtitle;
    ColorRole::Role role = ColorRole::Role::Gray;
    friend bool operator==(const OnboardingMetric&, const OnboardingMetric&) = default;
};

/// A page on the web.
struct TourLink {
    Q_GADGET
    QML_VALUE_TYPE(tourLink)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString caption MEMBER caption)
    Q_PROPERTY(QUrl address MEMBER address)

public:
    QString symbol;
    QString caption;
    QUrl address;
};

/// What the tour shows at a step.
struct OnboardingContent {
    Q_GADGET
    QML_VALUE_TYPE(onboardingContent)
    Q_PROPERTY(int page MEMBER page)
    Q_PROPERTY(int dot MEMBER dot)
    Q_PROPERTY(QString stepSubtitle MEMBER stepSubtitle)
    Q_PROPERTY(bool showsBack MEMBER showsBack)
    Q_PROPERTY(QString nextCaption MEMBER nextCaption)
    Q_PROPERTY(QString machineHeading MEMBER machineHeading)
    Q_PROPERTY(QString machineIdentity MEMBER machineIdentity)
    Q_PROPERTY(QString menuBarPreview MEMBER menuBarPreview)

public:
    int page = -1; ///< 0 to 4; the last one for any step that has none of its own
    int dot = -1;  ///< the step itself: no dot is lit for a step without one
    QString stepSubtitle;
    bool showsBack = false;
    QString nextCaption; ///< empty where nothing follows
    QString machineHeading;
    QString machineIdentity;
    QList<OnboardingMetric> metrics; ///< three of load, then three of temperature
    QString menuBarPreview;

    /// An empty one beyond the last.
    Q_INVOKABLE [[nodiscard]] tarnwick::OnboardingMetric metric(int index) const { return metrics.value(index); }

    friend bool operator==(const OnboardingContent&, const OnboardingContent&) = default;
};

[[nodiscard]] OnboardingContent onboardingContent(int step, const MacHardwareInfo& info, const MenuBarItemSet& pinned);

/// The tour's own samples of the pinned metrics, as the status item would join them; the product's name for none.
[[nodiscard]] QString liveMenuBarPreview(const MenuBarItemSet& pinned);
[[nodiscard]] QList<FeatureBullet> featureBullets();
/// The donation page, then the web site.
[[nodiscard]] QList<TourLink> tourLinks();
/// The entry that the tour shows as a card: a healthy server with three containers, checked just now.
[[nodiscard]] Server demoServer();

} // namespace tarnwick
