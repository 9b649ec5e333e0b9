// The shell's logic against a scripted status item, popover and clock.

#include "../computer/SampleComputer.h"
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
    void close() override { shown.reset(); }
    [[nodiscard]] bool isShown() const override { return shown != nullptr; }

    std::unique_ptr<QWindow> shown;
    QList<QPoint> anchors;
};

class ScriptedViews : public ViewFactory {
public:
    std::unique_ptr<QWindow> makePopover(ServerStore& /*store*/, UIState& /*ui*/, ThisComputer& /*computer*/,
                                         bool /*rounded*/, std::function<void()> /*close*/) override {
        ++popoversMade;
        return std::make_unique<QWindow>();
    }
    std::unique_ptr<QWindow> makeOnboardingWindow(ServerStore& /*store*/, UIState& /*ui*/, ThisComputer& /*computer*/,
                                                  std::function<void()> onComplete) override {
        finishTour = std::move(onComplete);
        return std::make_unique<QWindow>();
    }
    int popoversMade = 0;
    std::function<void()> finishTour;
};

} // namespace

class AppDelegateTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;
    QHash<QUuid, std::shared_ptr<QPromise<ServerMetrics>>> probes_;
    std::chrono::nanoseconds now_ = 1h;
    std::unique_ptr<SampleComputer> sample_;
    ScriptedViews views_;
    ScriptedStatusItem* item_ = nullptr;
    ScriptedPopover* popover_ = nullptr;
    std::unique_ptr<AppDelegate> delegate_;

    StoreCollaborators collaborators() {
        return {
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
    }

    AppSurroundings surroundings() {
        auto item = std::make_unique<ScriptedStatusItem>();
        item_ = item.get();
        auto popover = std::make_unique<ScriptedPopover>();
        popover_ = popover.get();
        return {
            .store = collaborators(),
            .computer = sample_->computer,
            .clock = [this] { return now_; },
            .statusItem = std::move(item),
            .popover = std::move(popover),
            .views = [this] { return &views_; },
        };
    }

    /// The probe of every server answers, each in a turn of the event loop of its own.
    void answerOneByOne(const ServerMetrics& metrics) {
        QTRY_COMPARE(probes_.size(), 201);
        for (const auto& probe : std::as_const(probes_)) {
            probe->addResult(metrics);
            probe->finish();
            QCoreApplication::processEvents();
        }
    }

    void launch(bool tourDone) {
        {
            ServerStore store(collaborators());
            store.editSettings([tourDone](AppSettings& settings) { settings.hasCompletedOnboarding = tourDone; });
        }
        probes_.clear();
        delegate_ = std::make_unique<AppDelegate>(surroundings());
        delegate_->applicationDidFinishLaunching();
    }

private Q_SLOTS:
    void init() { sample_ = std::make_unique<SampleComputer>(); }
    void cleanup() {
        delegate_.reset();
        probes_.clear();
        views_.popoversMade = 0;
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

        const qsizetype before = item_->contents.size();
        for (const auto& probe : std::as_const(probes_)) {
            probe->addResult(ServerMetrics{});
            probe->finish();
        }
        QTRY_COMPARE(item_->contents.last().title, QStringLiteral(" 41\u00b0C \u2022 201 OK"));
        QCOMPARE(item_->contents.last().symbolName, QStringLiteral("thermometer.medium"));
        const qsizetype composed = item_->contents.size() - before;
        QVERIFY2(composed < 20, qPrintable(QString::number(composed)));
    }

    /// Hosts that refuse answer within milliseconds. A load measured over one of those is 0 % or 100 %.
    void figuresStandStillWhileResultsArrive() {
        {
            ServerStore store(collaborators());
            store.editSettings([](AppSettings& settings) { settings.pinnedMenuBarItems = pins(PinPreset::Resources); });
        }
        launch(true);
        sample_->setCpu(100);
        answerOneByOne(ServerMetrics::offline(QStringLiteral("Connection refused")));
        QVERIFY(item_->contents.size() > 20);
        for (const StatusItemContent& content : std::as_const(item_->contents))
            QCOMPARE(content.title, QStringLiteral(" CPU 12% \u2022 GPU 8% \u2022 RAM 69%"));
        sample_->letTimePass();
        delegate_->updateStatusBarButton();
        QVERIFY(item_->contents.last().title.startsWith(QStringLiteral(" CPU 100%")));
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
        QCOMPARE(views_.popoversMade, 2);

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

        views_.finishTour();
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
