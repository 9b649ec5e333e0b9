#include "ViewRig.h"
#include "tour/OnboardingModel.h"
#include "tour/OnboardingWindow.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;
using enum MenuBarItem;

namespace {

/// How many steps are there.
qsizetype shownSteps(const QQuickItem* root) {
    return std::ranges::count_if(
        root->childItems(),
        [](const QQuickItem* item) {
            return item->inherits("QQuickLoader") && item->property("item").value<QObject*>();
        });
}

struct TourRig : ViewRig {
    QStringList opened;
    const ViewCollaborators collaborators{.computer = sample.computer, .openAddress = [this](const QUrl& address) {
                                              opened += address.toString();
                                          }};
    std::unique_ptr<OnboardingModel> model;

    ~TourRig() { view.reset(); }

    void showTour() {
        view.reset();
        model = std::make_unique<OnboardingModel>(*store, ui, collaborators);
        show(u"tour/OnboardingView"_s, {{u"tour"_s, QVariant::fromValue(model.get())}});
    }
};

} // namespace

class OnboardingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void stepsSayWhereTheyAre_data() {
        QTest::addColumn<int>("step");
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("subtitle");
        QTest::addColumn<bool>("back");
        QTest::addColumn<QString>("next");
        QTest::newRow("first") << 0 << 0 << u"Step 1 of 5 \u2022 Introduction"_s << false << u"Explore Features"_s;
        QTest::newRow("servers") << 1 << 1 << u"Step 2 of 5 \u2022 Server & Docker Fleets"_s << true << u"Next"_s;
        QTest::newRow("hardware") << 2 << 2 << u"Step 3 of 5 \u2022 Telemetry"_s << true << u"Next"_s;
        QTest::newRow("pins") << 3 << 3 << u"Step 4 of 5 \u2022 Menu Bar Customization"_s << true << u"Next"_s;
        QTest::newRow("last") << 4 << 4 << u"Step 5 of 5 \u2022 You're All Set!"_s << true << QString();
        QTest::newRow("beyond") << 5 << 4 << u"Step 5 of 5 \u2022 You're All Set!"_s << true << QString();
        QTest::newRow("before") << -1 << 4 << u"Step 5 of 5 \u2022 You're All Set!"_s << false << u"Next"_s;
    }

    void stepsSayWhereTheyAre() {
        QFETCH(const int, step);
        const OnboardingContent content = onboardingContent(step, {}, {});
        QTEST(content.page, "page");
        QCOMPARE(content.dot, step);
        QTEST(content.stepSubtitle, "subtitle");
        QTEST(content.showsBack, "back");
        QTEST(content.nextCaption, "next");
    }

    void previewsThePins() {
        QCOMPARE(liveMenuBarPreview({}), u"Tarnwick"_s);
        QCOMPARE(liveMenuBarPreview({ramUsage, cpuUsage}), u"CPU 12% \u2022 RAM 69%"_s);
        QCOMPARE(
            onboardingContent(3, {}, pins(PinPreset::All)).menuBarPreview,
            u"36\u00b0C \u2022 Peak 42\u00b0C \u2022 SSD 32\u00b0C \u2022 CPU 12% \u2022 GPU 8% \u2022 RAM 69% \u2022 2 OK"_s);
    }

    void showsTheMachine() {
        const OnboardingContent content = onboardingContent(2, SampleComputer::macMini(), {});
        QStringList tiles;
        for (const MacTile& tile : content.loads.tiles + content.thermals.tiles)
            tiles += QStringList{tile.title, tile.value, tile.subtitle}.join(u'|');
        QCOMPARE(tiles, (QStringList{u"CPU Usage|12.5%|10 Cores"_s, u"GPU Usage|8%|Metal"_s,
                                     u"Unified RAM|69%|11.0/16GB"_s, u"SoC Average|41.2\u00b0C|CPU/GPU Die"_s,
                                     u"Peak Core|57.8\u00b0C|Hotspot"_s, u"SSD Storage|32.0\u00b0C|NAND Flash"_s}));
        QCOMPARE(content.machineHeading, u"Mac mini (Apple M2 Pro)"_s);
        QCOMPARE(content.machineIdentity, u"Mac14,12 \u2022 macOS 14.5"_s);
    }

    void demoServerIsHealthy() {
        const Server server = demoServer();
        QCOMPARE(uuidString(server.id), u"00000000-0000-0000-0000-000000000001"_s);
        QCOMPARE(server.metrics->status(), ServerHealthStatus::healthy);
        QCOMPARE(qRound(server.metrics->memoryPercent()), 40);
        QCOMPARE(qRound(server.metrics->diskPercent()), 35);
        QCOMPARE(std::ranges::count_if(server.metrics->containers, &ContainerInfo::isRunning), 3);
        QVERIFY(!server.metrics->gpuPercent && !server.metrics->errorMessage && !server.customSshKeyPath);
    }

    void walksThroughTheSteps() {
        TourRig rig;
        rig.showTour();
        QQuickItem* root = rig.view->rootObject();
        QVERIFY(!findItem(root, u"back"_s)->isVisible());
        QCOMPARE(findItem(root, u"next"_s)->property("text").toString(), u"Explore Features"_s);
        for (int step = 1; step <= 4; ++step) {
            press(*rig.view, u"next"_s);
            QCOMPARE(rig.ui.onboardingStep(), step);
            // What leaves goes once it has faded.
            QTRY_COMPARE(shownSteps(root), 1);
        }
        QVERIFY(!findItem(root, u"next"_s)->isVisible());
        QCOMPARE(findItem(root, u"stepSubtitle"_s)->property("text").toString(),
                 u"Step 5 of 5 \u2022 You're All Set!"_s);
        press(*rig.view, u"back"_s);
        QCOMPARE(rig.ui.onboardingStep(), 3);
        QVERIFY(findItem(root, u"next"_s)->isVisible());
        // The step outlives the view.
        rig.showTour();
        QVERIFY(findItem(rig.view->rootObject(), u"preview"_s));
    }

    void showsTheDemoCard() {
        TourRig rig;
        rig.ui.setOnboardingStep(1);
        rig.showTour();
        OnboardingModel* const tour = rig.model.get();
        QCOMPARE(tour->demoCard().name, u"Production VPS (Ubuntu 24.04)"_s);
        QCOMPARE(tour->demoCard().containersText, u"3 / 3 Containers"_s);
        QCOMPARE(tour->demoCard().containers.size(), 3);
        // Its buttons work, on a server that the fleet does not have.
        tour->cardActions()->toggleExpanded(demoServer().id);
        QVERIFY(!tour->demoCard().isExpanded);
        tour->cardActions()->togglePause(demoServer().id);
        tour->cardActions()->remove(demoServer().id);
        QVERIFY(rig.store->servers().isEmpty());
        QCOMPARE(tour->demoCard().latencyText, u"19 ms"_s);
    }

    void appearsWithoutTrace() {
        TourRig rig;
        const QUuid other = QUuid::createUuid();
        rig.ui.setExpandedServers({other});
        rig.showTour();
        QCOMPARE(rig.ui.expandedServers(), (QSet<QUuid>{other, demoServer().id}));
        QVERIFY(rig.ui.macInfo().has_value());

        MacHardwareInfo known;
        known.modelName = u"known"_s;
        rig.ui.setMacInfo(known);
        rig.showTour();
        QCOMPARE(rig.ui.macInfo(), known);
        QCOMPARE(rig.ui.expandedServers().size(), 2);
        QVERIFY(rig.store->servers().isEmpty());
    }

    void pinsForReal() {
        TourRig rig;
        rig.ui.setOnboardingStep(3);
        rig.showTour();
        const auto preview = [&rig] {
            return findItem(rig.view->rootObject(), u"preview"_s)->property("text").toString();
        };
        press(*rig.view, u"Pin All"_s);
        QCOMPARE(rig.savedPins(), pins(PinPreset::All));
        press(*rig.view, u"Reset"_s);
        QCOMPARE(rig.savedPins(), pins(PinPreset::Standard));
        press(*rig.view, title(cpuUsage));
        QCOMPARE(rig.savedPins(), (MenuBarItemSet{socTemp, cpuUsage, serverStatus}));
        QCOMPARE(preview(), u"36\u00b0C \u2022 CPU 12% \u2022 2 OK"_s);
        for (const MenuBarItem item : {socTemp, cpuUsage, serverStatus})
            press(*rig.view, title(item));
        QCOMPARE(rig.savedPins(), MenuBarItemSet());
        QCOMPARE(preview(), u"Tarnwick"_s);

        // The boxes follow the pins when something else changes them, too.
        rig.store->editSettings([](AppSettings& settings) { settings.pinnedMenuBarItems = {ssdTemp}; },
                                ServerStore::Saving::later);
        QVERIFY(findItem(rig.view->rootObject(), title(ssdTemp))->property("checked").toBool());
        QVERIFY(!findItem(rig.view->rootObject(), title(cpuUsage))->property("checked").toBool());
    }

    void completes() {
        TourRig rig;
        rig.ui.setOnboardingStep(4);
        rig.showTour();
        QSignalSpy completed(rig.view->rootObject(), SIGNAL(completed()));
        QVERIFY(!rig.store->settings().hasCompletedOnboarding);
        // It has the keyboard.
        QTest::keyClick(rig.view.get(), Qt::Key_Return);
        QCOMPARE(completed.count(), 1);
        QVERIFY(rig.store->settings().hasCompletedOnboarding);
        QVERIFY(rig.savedSettings().hasCompletedOnboarding);
    }

    void leadsToTheWeb() {
        TourRig rig;
        rig.ui.setOnboardingStep(4);
        rig.showTour();
        press(*rig.view, u"Ko-fi Page"_s);
        press(*rig.view, u"Support Tarnwick on Ko-fi"_s);
        press(*rig.view, u"Official Website: tarnwick.example"_s);
        QCOMPARE(rig.opened, (QStringList{u"https://ko-fi.com/tarnwick"_s, u"https://ko-fi.com/tarnwick"_s,
                                          u"https://tarnwick.example"_s}));
    }

    void standsInAWindow() {
        TourRig rig;
        rig.ui.setOnboardingStep(4);
        int completions = 0;
        std::unique_ptr<OnboardingWindow> window;
        window = std::make_unique<OnboardingWindow>(*rig.store, rig.ui, rig.collaborators, [&] {
            ++completions;
            window.reset();
        });
        QCOMPARE(window->title(), u"Welcome to Tarnwick"_s);
        QCOMPARE(window->size(), QSize(540, 510));
        QCOMPARE(window->minimumSize(), window->maximumSize());
        QVERIFY((window->geometry().center() - window->screen()->availableGeometry().center()).manhattanLength() <= 2);
        QVERIFY(
            window->flags().testFlags(Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::WindowMinimizeButtonHint));
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        // Two presses before the event loop turns are one completion.
        QTest::keyClick(window.get(), Qt::Key_Return);
        if (window)
            QTest::keyClick(window.get(), Qt::Key_Return);
        QTRY_VERIFY(!window);
        QCOMPARE(completions, 1);
        QVERIFY(rig.savedSettings().hasCompletedOnboarding);

        // Closing it is no completion.
        rig.store->editSettings([](AppSettings& settings) { settings.hasCompletedOnboarding = false; },
                                ServerStore::Saving::later);
        window = std::make_unique<OnboardingWindow>(*rig.store, rig.ui, rig.collaborators, [&] { ++completions; });
        window->show();
        window->close();
        window.reset();
        QCOMPARE(completions, 1);
        QVERIFY(!rig.store->settings().hasCompletedOnboarding);
    }
};

QTEST_MAIN(OnboardingTest)
#include "tst_onboarding.moc"
