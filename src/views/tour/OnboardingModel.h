#pragma once

#include "OnboardingContent.h"
#include "ServerStore.h"
#include "UIState.h"
#include "ViewCollaborators.h"
#include "card/CardActions.h"
#include "card/ServerCardContent.h"
#include "settings/PinListModel.h"
#include "settings/PinPresetButton.h"

#include <QObject>
#include <QtQmlIntegration>

namespace tarnwick {

/// The welcome tour: what it shows at the UI state's step, and what it can do. When it is made, it opens the demo
/// server's card and, where the UI state has no snapshot of the hardware yet, takes one.
class OnboardingModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Comes with its view")
    Q_PROPERTY(tarnwick::OnboardingContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(tarnwick::ServerCardContent demoCard READ demoCard NOTIFY demoCardChanged)
    Q_PROPERTY(tarnwick::CardActions* cardActions READ cardActions CONSTANT)
    Q_PROPERTY(tarnwick::PinListModel* pins READ pins CONSTANT)
    Q_PROPERTY(QList<tarnwick::PinPresetButton> presets READ presets CONSTANT)
    Q_PROPERTY(QList<tarnwick::TourStep> steps READ steps CONSTANT)
    Q_PROPERTY(QList<tarnwick::FeatureBullet> bullets READ bullets CONSTANT)
    Q_PROPERTY(tarnwick::TourWords words READ words CONSTANT)
    Q_PROPERTY(QList<tarnwick::TourLink> links READ links CONSTANT)

public:
    /// All three must outlive the model.
    OnboardingModel(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators, QObject* parent = nullptr);

    [[nodiscard]] const OnboardingContent& content() const { return content_; }
    [[nodiscard]] ServerCardContent demoCard() const;
    /// What the demo card's buttons do. Its server is not in the store.
    [[nodiscard]] CardActions* cardActions() { return &cardActions_; }
    [[nodiscard]] PinListModel* pins() { return &pins_; }
    [[nodiscard]] QList<PinPresetButton> presets() const { return pinPresetButtons(tourCaption); }
    [[nodiscard]] QList<TourStep> steps() const { return tourSteps(collaborators_.computer.words()); }
    [[nodiscard]] QList<FeatureBullet> bullets() const { return featureBullets(collaborators_.computer.words()); }
    [[nodiscard]] TourWords words() const { return tourWords(collaborators_.computer.words()); }
    [[nodiscard]] QList<TourLink> links() const { return tourLinks(); }

    Q_INVOKABLE void back();
    Q_INVOKABLE void next();
    /// Opens a page in the browser.
    Q_INVOKABLE void open(const tarnwick::TourLink& link);
    /// Records that the tour was completed, and says so.
    Q_INVOKABLE void complete();

Q_SIGNALS:
    void contentChanged();
    void demoCardChanged();
    void completed();

private:
    [[nodiscard]] OnboardingContent publishedContent() const;
    void update();

    ServerStore& store_;
    UIState& ui_;
    const ViewCollaborators& collaborators_;
    const Server demoServer_ = demoServer();
    CardActions cardActions_;
    PinListModel pins_;
    OnboardingContent content_;
};

} // namespace tarnwick
