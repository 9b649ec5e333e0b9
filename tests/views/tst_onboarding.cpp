#include "Fixture.h"
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
    OnboardingModel* showTour() {
        return show<OnboardingModel>(u"tour/OnboardingView"_s, u"tour"_s, SIGNAL(completed()));
    }
    OnboardingModel* showTour(int step) {
        ui.setOnboardingStep(step);
        return showTour();
    }
};

} // namespace

class OnboardingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void describesTheSteps() {
        QStringList lines;
        for (int step = -1; step <= 5; ++step) {
            const OnboardingContent content = onboardingContent(step, {}, {}, macWords);
            lines += QStringList{QString::number(content.page), QString::number(content.dot), content.stepSubtitle,
                                 content.showsBack ? u"back"_s : u""_s, content.nextCaption}
                         .join(u'|');
        }
        const OnboardingContent content =
            onboardingContent(2, SampleComputer::macMini(), pins(PinPreset::All), macWords);
        lines += {content.machineHeading, content.machineIdentity, content.menuBarPreview};
        for (const MacTile& tile : content.loads.tiles + content.thermals.tiles)
            lines += QStringList{tile.title, tile.value, tile.subtitle}.join(u'|');
        lines += {liveMenuBarPreview({ramUsage, cpuUsage}), liveMenuBarPreview({})};
        QCOMPARE(lines, fixtureLines(u"views/tour.txt"_s));
    }

    void walksThroughTheSteps() {
        TourRig rig;
        rig.showTour();
        QVERIFY(!rig.item(u"back"_s));
        QCOMPARE(rig.text(u"next"_s), u"Explore Features"_s);
        for (int step = 1; step <= 4; ++step) {
            rig.click(u"next"_s);
            QCOMPARE(rig.ui.onboardingStep(), step);
            // What leaves goes once it has faded.
            QTRY_COMPARE(shownSteps(rig.view->rootObject()), 1);
        }
        QVERIFY(!rig.item(u"next"_s));
        QCOMPARE(rig.text(u"stepSubtitle"_s), u"Step 5 of 5 \u2022 You're All Set!"_s);
        rig.click(u"back"_s);
        QCOMPARE(rig.ui.onboardingStep(), 3);
        QVERIFY(rig.item(u"next"_s));
        // The step outlives the view.
        rig.showTour();
        QVERIFY(rig.item(u"preview"_s));
    }

    void showsTheDemoCard() {
        TourRig rig;
        const OnboardingModel* const tour = rig.showTour(1);
        QCOMPARE(tour->demoCard().id, QUuid(u"00000000-0000-0000-0000-000000000001"_s));
        QCOMPARE(tour->demoCard().dotRole, ColorRole::Role::Green);
        for (const QString& text : {u"Production VPS (Ubuntu 24.04)"_s, u"19 ms"_s, u"24.5%"_s, u"3.2 / 8.0 GB (40%)"_s,
                                    u"42.5 / 120.0 GB (35%)"_s})
            QVERIFY2(rig.item(text), qPrintable(text));
        // Its buttons work, on a server that the fleet does not have.
        rig.click(u"Enter container shell (docker exec)"_s);
        rig.click(u"3 / 3 Containers"_s);
        QTRY_VERIFY(!tour->demoCard().isExpanded);
        rig.click(u"Open SSH in Terminal"_s);
        QCOMPARE(rig.terminals, (QStringList{demoServer().name + u"/nginx-proxy"_s, demoServer().name}));
        rig.click(u"Pause monitoring"_s);
        rig.click(u"Remove server from Tarnwick"_s);
        QVERIFY(rig.store->servers().isEmpty() && rig.item(u"19 ms"_s));
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
        rig.showTour(3);
        const std::pair<QString, MenuBarItemSet> rows[] = {
            {u"Pin All"_s, pins(PinPreset::All)},
            {u"Reset"_s, pins(PinPreset::Standard)},
            {titleOf(cpuUsage), {socTemp, cpuUsage, serverStatus}},
            {titleOf(socTemp), {cpuUsage, serverStatus}},
        };
        for (const auto& [button, pinned] : rows) {
            rig.click(button);
            QCOMPARE(rig.savedPins(), pinned);
        }
        QCOMPARE(rig.text(u"preview"_s), u"CPU 12% \u2022 2 OK"_s);

        // The boxes follow the pins when something else changes them, too.
        rig.store->editSettings([](AppSettings& settings) { settings.pinnedMenuBarItems = {ssdTemp}; },
                                ServerStore::Saving::later);
        QVERIFY(rig.item(titleOf(ssdTemp))->property("checked").toBool());
        QVERIFY(!rig.item(titleOf(cpuUsage))->property("checked").toBool());
    }

    void leadsToTheWebAndCompletes() {
        TourRig rig;
        rig.showTour(4);
        for (const QString& link :
             {u"Ko-fi Page"_s, u"Support Tarnwick on Ko-fi"_s, u"Official Website: tarnwick.example"_s})
            rig.click(link);
        QCOMPARE(rig.opened, (QStringList{u"https://ko-fi.com/tarnwick"_s, u"https://ko-fi.com/tarnwick"_s,
                                          u"https://tarnwick.example"_s}));
        QVERIFY(!rig.store->settings().hasCompletedOnboarding);
        rig.click(u"start"_s);
        QCOMPARE(rig.closings(), 1);
        QVERIFY(rig.store->settings().hasCompletedOnboarding && rig.savedSettings().hasCompletedOnboarding);
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
