// The shell's logic against a scripted status item, popover and clock.

#include "AppDelegate.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

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
        anchors.append(anchor);
    }
    void close() override {
        if (!shown)
            return;
        shown.reset();
        Q_EMIT didClose();
    }
    [[nodiscard]] bool isShown() const override { return shown != nullptr; }

    std::unique_ptr<QWindow> shown;
    QList<QPoint> anchors;
};

} // namespace

class AppDelegateTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;
    QHash<QUuid, std::shared_ptr<QPromise<ServerMetrics>>> probes_;
    std::chrono::nanoseconds now_ = 1h;
    int contentsMade_ = 0;
    int thermalReadings_ = 0;
    std::function<void()> finishTour_;
    ScriptedStatusItem* item_ = nullptr;
    ScriptedPopover* popover_ = nullptr;
    std::unique_ptr<AppDelegate> delegate_;

    AppSurroundings surroundings() {
        AppSurroundings result;
        result.store = {
            .collect =
                [this](const Server& server) {
                    auto promise = std::make_shared<QPromise<ServerMetrics>>();
                    promise->start();
                    probes_.insert(server.id, promise);
                    return promise->future();
                },
            .clock = Instant::now,
            .notify = [](const Alert&, bool, Instant) {},
            .sshHosts =
                [] {
                    QList<SSHConfigHost> hosts;
                    for (int i = 0; i < 200; ++i)
                        hosts.append({QStringLiteral("h%1").arg(i), QStringLiteral("h"), QStringLiteral("u"), 22, {}});
                    return hosts;
                },
            .computerName = [] { return std::optional(QStringLiteral("desk")); },
            .folder = folder_.path(),
        };
        result.thermals = [this] {
            ++thermalReadings_;
            return ThermalSummary{41.3, 50, {}, {}};
        };
        result.loads = {[] { return 1.0; }, [] { return 2.0; },
                        [] {
                            return 3.0;
                        }};
        result.clock = [this] {
            return now_;
        };
        auto item = std::make_unique<ScriptedStatusItem>();
        item_ = item.get();
        result.statusItem = std::move(item);
        auto popover = std::make_unique<ScriptedPopover>();
        popover_ = popover.get();
        result.popover = std::move(popover);
        result.makePopoverContent = [this](ServerStore&, UIState&, bool, const std::function<void()>&) {
            ++contentsMade_;
            return std::make_unique<QWindow>();
        };
        result.makeOnboardingWindow = [this](ServerStore&, UIState&, std::function<void()> done) {
            finishTour_ = std::move(done);
            return std::make_unique<QWindow>();
        };
        return result;
    }

    void launch(bool tourDone) {
        {
            ServerStore store(surroundings().store);
            store.editSettings([tourDone](AppSettings& settings) { settings.hasCompletedOnboarding = tourDone; });
        }
        probes_.clear();
        delegate_ = std::make_unique<AppDelegate>(surroundings());
        delegate_->applicationDidFinishLaunching();
    }

private Q_SLOTS:
    void cleanup() {
        delegate_.reset();
        probes_.clear();
        contentsMade_ = 0;
        QVERIFY(QFile::remove(folder_.filePath(QStringLiteral("servers.json"))));
        QVERIFY(QFile::remove(folder_.filePath(QStringLiteral("settings.json"))));
    }

    void labelFollowsTheFleetAndBurstsCoalesce() {
        launch(true);
        QCOMPARE(item_->contents.size(), 1);
        QCOMPARE(item_->contents.first(),
                 (StatusItemContent{QStringLiteral("exclamationmark.triangle.fill"),
                                    QStringLiteral(" 41\u00b0C \u2022 ALL OFF"), QStringLiteral("Tarnwick")}));
        QTRY_COMPARE(probes_.size(), 201);
        QCoreApplication::processEvents();

        const int before = thermalReadings_;
        for (const auto& probe : std::as_const(probes_)) {
            probe->addResult(ServerMetrics{});
            probe->finish();
        }
        QTRY_COMPARE(item_->contents.last().title, QStringLiteral(" 41\u00b0C \u2022 201 OK"));
        QCOMPARE(item_->contents.last().symbolName, QStringLiteral("thermometer.medium"));
        QVERIFY2(thermalReadings_ - before < 20, qPrintable(QString::number(thermalReadings_ - before)));
    }

    void clickTogglesAndTheClosingClickDoesNotReopen() {
        launch(true);
        Q_EMIT item_->clicked({100, 20});
        QVERIFY(popover_->isShown());
        QCOMPARE(popover_->anchors.last(), QPoint(100, 20));

        // Pressing on the status item is a press outside of the popover; its release is the click.
        delegate_->ui()->setShowingSettings(true);
        delegate_->ui()->setShowingOnboarding(true);
        Q_EMIT popover_->pressedOutside();
        QTRY_VERIFY(!popover_->isShown());
        QVERIFY(!delegate_->ui()->showingSettings());
        QVERIFY(!delegate_->ui()->showingOnboarding());
        now_ += 249ms;
        Q_EMIT item_->clicked({100, 20});
        QVERIFY(!popover_->isShown());
        now_ += 1ms;
        Q_EMIT item_->clicked({100, 20});
        QVERIFY(popover_->isShown());
        QCOMPARE(contentsMade_, 2);

        Q_EMIT item_->clicked({100, 20});
        QVERIFY(!popover_->isShown());
    }

    void losingTheFocusClosesAndClearsTheSheets() {
        launch(true);
        Q_EMIT item_->clicked({});
        delegate_->ui()->setShowingAddServer(true);
        delegate_->ui()->setShowingMacInfoSheet(true);
        delegate_->ui()->setNewServerName(QStringLiteral("half typed"));
        Q_EMIT popover_->lostFocus();
        QTRY_VERIFY(!popover_->isShown());
        QVERIFY(!delegate_->ui()->showingAddServer());
        QVERIFY(!delegate_->ui()->showingMacInfoSheet());
        QCOMPARE(delegate_->ui()->newServerName(), QStringLiteral("half typed"));
    }

    void tourShowsOnceAndEndsInThePopover() {
        launch(true);
        QVERIFY(!delegate_->onboardingWindow());

        launch(false);
        QPointer<QWindow> window = delegate_->onboardingWindow();
        QVERIFY(window && window->isVisible());
        delegate_->showOnboardingWindow();
        QCOMPARE(delegate_->onboardingWindow(), window);

        finishTour_();
        QTRY_VERIFY(!window);
        QVERIFY(!delegate_->onboardingWindow());
        QVERIFY(popover_->isShown());
    }

    void terminationSaves() {
        launch(true);
        delegate_->store()->editSettings([](AppSettings& settings) { settings.refreshIntervalSeconds = 75; },
                                         ServerStore::Saving::later);
        delegate_->applicationWillTerminate();
        QFile file(folder_.filePath(QStringLiteral("settings.json")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("\"refreshIntervalSeconds\":75"));
    }
};

QTEST_MAIN(AppDelegateTest)
#include "tst_appdelegate.moc"
