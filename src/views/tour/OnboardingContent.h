#pragma once

#include "MacHardwareCollector.h"
#include "MenuBarItem.h"
#include "Server.h"
#include "SharedCaptions.h"
#include "SystemWords.h"
#include "computer/MacTile.h"
#include "controls/ColorRole.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QtQmlIntegration>

namespace tarnwick {

/// The texts at the head of a step.
struct TourStep {
    Q_GADGET
    QML_VALUE_TYPE(tourStep)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString line MEMBER line)

public:
    QString subtitle; ///< of the whole tour: which step it is
    QString title;
    QString line;
};

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

/// The tour's fixed texts, but for those at the head of a step.
struct TourWords {
    Q_GADGET
    QML_VALUE_TYPE(tourWords)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString back MEMBER back)
    Q_PROPERTY(QString serversNote MEMBER serversNote)
    Q_PROPERTY(QString unlocked MEMBER unlocked)
    Q_PROPERTY(QString price MEMBER price)
    Q_PROPERTY(QString start MEMBER start)
    Q_PROPERTY(QString support MEMBER support)
    Q_PROPERTY(QString plea MEMBER plea)
    Q_PROPERTY(QString donationPage MEMBER donationPage)
    Q_PROPERTY(QString barSymbol MEMBER barSymbol)
    Q_PROPERTY(QStringList barMenus MEMBER barMenus)
    Q_PROPERTY(QString pinsHeading MEMBER pinsHeading)
    Q_PROPERTY(QString unlockedFeatures MEMBER unlockedFeatures)

public:
    QString title = QStringLiteral("Tarnwick Tour");
    QString back = QStringLiteral("Back");
    QString serversNote = QStringLiteral("Tarnwick auto-discovers your ~/.ssh/config and parses Docker containers with "
                                         "1-click shell access.");
    QString unlocked = QStringLiteral("All Features Unlocked");
    QString price = SharedCaptions::price.toString();
    QString start = QStringLiteral("Start Using Tarnwick");
    QString support = QStringLiteral("Support Development");
    QString plea = QStringLiteral("If you find Tarnwick helpful for your daily workflow, consider buying a coffee on "
                                  "Ko-fi to support ongoing development.");
    QString donationPage = QStringLiteral("Ko-fi Page");
    QString barSymbol; ///< at the start of the mock bar
    QStringList barMenus;
    QString pinsHeading;
    QString unlockedFeatures;
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
    Q_PROPERTY(tarnwick::MacTileGroup loads MEMBER loads)
    Q_PROPERTY(tarnwick::MacTileGroup thermals MEMBER thermals)
    Q_PROPERTY(QString menuBarPreview MEMBER menuBarPreview)

public:
    int page = -1; ///< 0 to 4; the last one for a step outside of that range
    int dot = -1;  ///< the step itself; outside of 0 to 4 no dot is lit
    QString stepSubtitle;
    bool showsBack = false;
    QString nextCaption; ///< empty where nothing follows
    QString machineHeading;
    QString machineIdentity;
    MacTileGroup loads;
    MacTileGroup thermals;
    QString menuBarPreview;

    friend bool operator==(const OnboardingContent&, const OnboardingContent&) = default;
};

[[nodiscard]] OnboardingContent onboardingContent(int step, const MacHardwareInfo& info, const MenuBarItemSet& pinned,
                                                  const SystemWords& words);

/// The tour's own samples of the pinned metrics, as the status item would join them; the product's name for none.
[[nodiscard]] QString liveMenuBarPreview(const MenuBarItemSet& pinned);
[[nodiscard]] QList<TourStep> tourSteps(const SystemWords& words);
[[nodiscard]] QList<FeatureBullet> featureBullets(const SystemWords& words);
[[nodiscard]] TourWords tourWords(const SystemWords& words);
/// The donation page, then the web site.
[[nodiscard]] QList<TourLink> tourLinks();
/// The entry that the tour shows as a card: a healthy server with three containers, checked just now.
[[nodiscard]] Server demoServer();

} // namespace tarnwick
