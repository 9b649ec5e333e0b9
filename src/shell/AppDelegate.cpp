#include "AppDelegate.h"

#include <QEvent>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {
/// A press on the status item is outside of the popover and closes it. The click that follows must not open it again.
constexpr auto reopenDelay = 250ms;
} // namespace

AppDelegate::AppDelegate(AppSurroundings surroundings, QObject* parent)
    : QObject(parent), surroundings_(std::move(surroundings)) {}

AppDelegate::~AppDelegate() {
    // Windows use the store and the UI state, so they are destroyed first.
    surroundings_.popover.reset();
    onboardingWindow_.reset();
}

void AppDelegate::applicationDidFinishLaunching() {
    store_ = std::make_unique<ServerStore>(surroundings_.store);
    ui_ = std::make_unique<UIState>();

    connect(surroundings_.statusItem.get(), &StatusItem::clicked, this, &AppDelegate::statusBarButtonClicked);
    if (Popover* popover = surroundings_.popover.get()) {
        connect(popover, &Popover::pressedOutside, this, &AppDelegate::closePopover, Qt::QueuedConnection);
        connect(popover, &Popover::lostFocus, this, &AppDelegate::closePopover, Qt::QueuedConnection);
    }
    updateStatusBarButton();

    connect(store_.get(), &ServerStore::objectWillChange, this, [this] { updateSoon_.request(); });
    connect(&labelTimer_, &QTimer::timeout, this, &AppDelegate::updateStatusBarButton);
    labelTimer_.start(1s);

    if (!store_->settings().hasCompletedOnboarding)
        showOnboardingWindow();
}

void AppDelegate::applicationWillTerminate() {
    if (!store_)
        return;
    store_->save();
    store_->finishSaving();
}

void AppDelegate::updateStatusBarButton() {
    const StatusItemLabel label = composeStatusItemLabel(store_->servers(), store_->settings(), surroundings_.computer);
    surroundings_.statusItem->setContent({label.symbolName, label.title, u"Tarnwick"_s});
}

void AppDelegate::statusBarButtonClicked(QPoint position) {
    if (lastClosedTime_ && surroundings_.clock() - *lastClosedTime_ < reopenDelay)
        return;
    if (!surroundings_.popover)
        return;
    if (surroundings_.popover->isShown()) {
        closePopover();
        return;
    }
    anchor_ = position;
    showPopover();
}

std::unique_ptr<QWindow> AppDelegate::makeWindow(const std::function<std::unique_ptr<QWindow>(ViewFactory&)>& make) {
    ViewFactory* const views = surroundings_.popover && !lacksViews_ ? surroundings_.views() : nullptr;
    auto window = views ? make(*views) : nullptr;
    lacksViews_ = !window;
    return window;
}

void AppDelegate::showPopover() {
    Popover* const popover = surroundings_.popover.get();
    if (!popover || popover->isShown())
        return;
    auto content = makeWindow([&](ViewFactory& views) {
        return views.makePopover(*store_, *ui_, surroundings_.computer, popover->isTranslucent(),
                                 [this] { closePopover(); });
    });
    if (content)
        popover->show(std::move(content), anchor_);
}

void AppDelegate::closePopover() {
    lastClosedTime_ = surroundings_.clock();
    ui_->setShowingAddServer(false);
    ui_->setShowingSettings(false);
    ui_->setShowingMacInfoSheet(false);
    if (surroundings_.popover)
        surroundings_.popover->close();
}

void AppDelegate::showOnboardingWindow() {
    if (!onboardingWindow_) {
        onboardingWindow_ = makeWindow([this](ViewFactory& views) {
            return views.makeOnboardingWindow(*store_, *ui_, surroundings_.computer, [this] { finishOnboarding(); });
        });
        if (!onboardingWindow_)
            return;
        onboardingWindow_->installEventFilter(this);
    }
    onboardingWindow_->show();
    onboardingWindow_->raise();
    onboardingWindow_->requestActivate();
}

void AppDelegate::finishOnboarding() {
    // Called from inside the window, which is destroyed after its event is handled. The popover comes after that, so
    // that memory need never hold both.
    if (onboardingWindow_)
        onboardingWindow_->close();
    QMetaObject::invokeMethod(this, &AppDelegate::showPopover, Qt::QueuedConnection);
}

bool AppDelegate::eventFilter(QObject* watched, QEvent* event) {
    if (watched == onboardingWindow_.get() && event->type() == QEvent::Close) {
        connect(watched, &QObject::destroyed, this, &returnWindowMemory, Qt::QueuedConnection);
        onboardingWindow_.release()->deleteLater();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tarnwick
