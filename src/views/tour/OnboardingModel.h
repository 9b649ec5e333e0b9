#pragma once

#include "OnboardingContent.h"
#include "ServerStore.h"
#include "UIState.h"
#include "card/CardActions.h"
#include "card/ServerCardContent.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QtQmlIntegration>

#include <memory>

namespace tarnwick {

/// The welcome tour: what it shows at the UI state's step, and what it can do. When it is made, it opens the demo
/// server's card and, where the UI state has no snapshot of the hardware yet, takes one.
class OnboardingModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    /// Both must outlive the model.
    Q_PROPERTY(tarnwick::ServerStore* store MEMBER store_ NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(tarnwick::UIState* ui MEMBER ui_ REQUIRED)
    Q_PROPERTY(tarnwick::OnboardingContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(tarnwick::ServerCardContent demoCard READ demoCard NOTIFY demoCardChanged)
    Q_PROPERTY(tarnwick::CardActions* cardActions READ cardActions NOTIFY cardActionsChanged)
    Q_PROPERTY(QList<tarnwick::FeatureBullet> bullets READ bullets CONSTANT)
    Q_PROPERTY(QList<tarnwick::TourLink> links READ links CONSTANT)

public:
    using QObject::QObject;

    [[nodiscard]] const OnboardingContent& content() const { return content_; }
    [[nodiscard]] ServerCardContent demoCard() const;
    /// What the demo card can do; to a server that the store does not have.
    [[nodiscard]] CardActions* cardActions() const { return cardActions_.get(); }
    [[nodiscard]] QList<FeatureBullet> bullets() const { return featureBullets(); }
    [[nodiscard]] QList<TourLink> links() const { return tourLinks(); }

    Q_INVOKABLE void back();
    Q_INVOKABLE void next();
    /// Opens a page in the browser.
    Q_INVOKABLE void open(const tarnwick::TourLink& link);
    /// Records that the tour was completed, and says so.
    Q_INVOKABLE void complete();

Q_SIGNALS:
    void storeChanged();
    void contentChanged();
    void demoCardChanged();
    void cardActionsChanged();
    void completed();

private:
    void classBegin() override {}
    void componentComplete() override;
    void update();

    ServerStore* store_ = nullptr;
    UIState* ui_ = nullptr;
    const Server demoServer_ = demoServer();
    std::unique_ptr<CardActions> cardActions_;
    OnboardingContent content_;
};

} // namespace tarnwick
