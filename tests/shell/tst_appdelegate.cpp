// The shell's logic against a scripted status item, popover and clock.

#include "../computer/SampleComputer.h"
#include "AppDelegate.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tarnwick;

namespace {

class ScriptedStatusItem : public StatusItem {
public:
    void setContent(const StatusItemContent& content) override { contents.append(content); }
    QList<StatusItemContent> contents;
};

class ScriptedPopover : public Popover {
public:
    void show(std::unique_ptr<QWindow> content, QPoint anchor) override {
        shown = std::move(content);
        shownAt = anchor;
    }
    void close() override { shown.reset(); }
    [[nodiscard]] bool isShown() const override { return shown != nullptr; }

    std::unique_ptr<QWindow> shown;
    QPoint shownAt;
};

class ScriptedViews : public ViewFactory {
public:
    std::unique_ptr<QWindow> makePopover(ServerStore& /*store*/, UIState& /*ui*/, ThisComputer& /*computer*/,
                                         bool /*rounded*/, std::function<void()> /*close*/) override {
        return std::make_unique<QWindow>();
    }
    std::unique_ptr<QWindow> makeOnboardingWindow(ServerStore& /*store*/, UIState& /*ui*/, ThisComputer& /*computer*/,
                                                  std::function<void()> onComplete) override {
        finishTour = std::move(onComplete);
        ++tours;
        return canLoad ? std::make_unique<QWindow>() : nullptr;
    }
    std::function<void()> finishTour;
    bool canLoad = true;
    int tours = 0;
};

} // namespace

class AppDelegateTest : public QObject {
    Q_OBJECT

private:
    std::optional<QTemporaryDir> folder_;
    QHash<QUuid, std::shared_ptr<QPromise<ServerMetrics>>> probes_;
    std::chrono::nanoseconds now_ = 1h;
    std::unique_ptr<SampleComputer> sample_;
    ScriptedViews views_;
    ScriptedStatusItem* item_ = nullptr;
    ScriptedPopover* popover_ = nullptr;
    std::unique_ptr<AppDelegate> delegate_;

    StoreCollaborators collaborators() {
        QList<SSHConfigHost> hosts;
        for (int i = 0; i < 200; ++i)
            hosts.append({u"h%1"_s.arg(i), u"h"_s, u"u"_s, 22, {}});
        return {
            .collect =
                [this](const Server& server, const ProbeManner&) {
                    auto promise = std::make_shared<QPromise<ServerMetrics>>();
                    promise->start();
                    probes_.insert(server.id, promise);
                    return promise->future();
                },
            .clock = Instant::now,
            .claim = [](const QString&, Instant) { return false; },
            .notify = {},
            .hasDefaultRoute = [] { return true; },
            .sshHosts = [hosts] { return hosts; },
            .computerName = [] { return std::optional(u"desk"_s); },
            .folder = folder_->path(),
        };
    }

    /// From stored settings in which the tour is done, but for what `choose` changes.
    void launch(const std::function<void(AppSettings&)>& choose = [](AppSettings&) {}) {
        delegate_.reset();
        {
            ServerStore store(collaborators());
            store.editSettings([&choose](AppSettings& settings) {
                settings.hasCompletedOnboarding = true;
                choose(settings);
            });
        }
        probes_.clear();
        auto item = std::make_unique<ScriptedStatusItem>();
        item_ = item.get();
        auto popover = std::make_unique<ScriptedPopover>();
        popover_ = popover.get();
        delegate_ = std::make_unique<AppDelegate>(AppSurroundings{
            .store = collaborators(),
            .computer = sample_->computer,
            .clock = [this] { return now_; },
            .statusItem = std::move(item),
            .popover = std::move(popover),
            .views = [this] { return &views_; },
        });
        delegate_->applicationDidFinishLaunching();
    }

    /// The probe of every server answers; `afterEach` runs between the answers.
    void answer(const ServerMetrics& metrics, const std::function<void()>& afterEach) {
        for (const auto& probe : std::as_const(probes_)) {
            probe->addResult(metrics);
            probe->finish();
            afterEach();
        }
    }

private Q_SLOTS:
    void init() {
        sample_ = std::make_unique<SampleComputer>();
        folder_.emplace();
    }
    void cleanup() { delegate_.reset(); }

    void labelFollowsTheFleetAndBurstsCoalesce() {
        launch();
        QCOMPARE(item_->contents,
                 (QList<StatusItemContent>{{u"exclamationmark.triangle.fill"_s, u" 41°C • ALL OFF"_s, u"Tarnwick"_s}}));
        QTRY_COMPARE(probes_.size(), 201);
        QCoreApplication::processEvents();

        item_->contents.clear();
        answer(ServerMetrics{}, [] {});
        QTRY_COMPARE(item_->contents.value(item_->contents.size() - 1).title, u" 41°C • 201 OK"_s);
        QCOMPARE(item_->contents.last().symbolName, u"thermometer.medium"_s);
        QVERIFY2(item_->contents.size() < 20, qPrintable(QString::number(item_->contents.size())));
    }

    void labelFollowsSettingsListAndTime() {
        launch();
        const auto title = [this] {
            return item_->contents.last().title;
        };
        delegate_->store()->editSettings([](AppSettings& settings) {
            settings.pinnedMenuBarItems = {MenuBarItem::cpuUsage, MenuBarItem::serverStatus};
        });
        QTRY_COMPARE(title(), u" CPU 12% • ALL OFF"_s);
        delegate_->store()->setServers({});
        QTRY_COMPARE(title(), u" CPU 12% • 0"_s);
        sample_->setCpu(100);
        sample_->letTimePass();
        QTRY_COMPARE(title(), u" CPU 100% • 0"_s);
        QCOMPARE(delegate_->findChild<QTimer*>()->interval(), 1000);
    }

    /// Hosts that refuse answer within milliseconds. A load measured over one of those is 0 % or 100 %.
    void figuresStandStillWhileResultsArrive() {
        launch([](AppSettings& settings) { settings.pinnedMenuBarItems = pins(PinPreset::Resources); });
        sample_->setCpu(100);
        QTRY_COMPARE(probes_.size(), 201);
        answer(ServerMetrics::offline(u"Connection refused"_s), [] { QCoreApplication::processEvents(); });
        QVERIFY(item_->contents.size() > 20);
        for (const StatusItemContent& content : std::as_const(item_->contents))
            QCOMPARE(content.title, u" CPU 12% • GPU 8% • RAM 69%"_s);
        sample_->letTimePass();
        delegate_->updateStatusBarButton();
        QVERIFY(item_->contents.last().title.startsWith(u" CPU 100%"_s));
    }

    void clickTogglesAndTheClosingClickDoesNotReopen() {
        launch();
        Q_EMIT item_->clicked({100, 20});
        QVERIFY(popover_->isShown());
        QCOMPARE(popover_->shownAt, QPoint(100, 20));

        // Pressing on the status item is a press outside of the popover; its release is the click.
        Q_EMIT popover_->pressedOutside();
        QTRY_VERIFY(!popover_->isShown());
        now_ += 249ms;
        Q_EMIT item_->clicked({100, 20});
        QVERIFY(!popover_->isShown());
        now_ += 1ms;
        Q_EMIT item_->clicked({100, 20});
        QVERIFY(popover_->isShown());
        Q_EMIT item_->clicked({100, 20});
        QVERIFY(!popover_->isShown());
    }

    void losingTheFocusClosesAndClearsTheSheets() {
        launch();
        Q_EMIT item_->clicked({});
        UIState& ui = *delegate_->ui();
        for (const auto show : {&UIState::setShowingAddServer, &UIState::setShowingMacInfoSheet,
                                &UIState::setShowingSettings, &UIState::setShowingOnboarding})
            (ui.*show)(true);
        ui.setNewServerName(u"half typed"_s);
        Q_EMIT popover_->lostFocus();
        QTRY_VERIFY(!popover_->isShown());
        for (const auto showing : {&UIState::showingAddServer, &UIState::showingMacInfoSheet, &UIState::showingSettings,
                                   &UIState::showingOnboarding})
            QVERIFY(!(ui.*showing)());
        QCOMPARE(ui.newServerName(), u"half typed"_s);
    }

    void triesOnceWhatCannotBeLoaded() {
        views_.canLoad = false;
        launch([](AppSettings& settings) { settings.hasCompletedOnboarding = false; });
        delegate_->showOnboardingWindow();
        Q_EMIT item_->clicked({});
        QVERIFY(!delegate_->onboardingWindow() && !popover_->isShown());
        QCOMPARE(std::exchange(views_.tours, 0), 1);
        views_.canLoad = true;
    }

    void tourShowsOnceAndEndsInThePopover() {
        launch();
        QVERIFY(!delegate_->onboardingWindow());

        launch([](AppSettings& settings) { settings.hasCompletedOnboarding = false; });
        QPointer<QWindow> window = delegate_->onboardingWindow();
        QVERIFY(window && window->isVisible());
        delegate_->showOnboardingWindow();
        QCOMPARE(delegate_->onboardingWindow(), window);

        views_.finishTour();
        QTRY_VERIFY(!window);
        QVERIFY(!delegate_->onboardingWindow());
        QVERIFY(popover_->isShown());
    }
};

QTEST_MAIN(AppDelegateTest)
#include "tst_appdelegate.moc"
