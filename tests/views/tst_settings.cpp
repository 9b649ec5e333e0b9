#include "SheetRig.h"
#include "settings/SettingsModel.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

struct SettingsRig : SheetRig {
    QStringList opened;
    const ViewCollaborators collaborators{.computer = sample.computer, .openAddress = [this](const QUrl& url) {
                                              opened += url.toString();
                                          }};
    SettingsModel* model = nullptr; ///< of the sheet that is shown

    void showSettings() {
        auto made = std::make_unique<SettingsModel>(*store, ui, collaborators);
        model = made.get();
        showSheet(u"settings/SettingsView"_s, u"settings"_s, std::move(made));
    }
};

} // namespace

class SettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writesValues_data() {
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<double>("percent");
        QTest::addColumn<QString>("expected");
        QTest::newRow("defaults") << qint64(30) << 90.0 << u"30 seconds, 90%"_s;
        QTest::newRow("half to even, down") << qint64(1) << 84.5 << u"1 seconds, 84%"_s;
        QTest::newRow("half to even, up") << qint64(-5) << 85.5 << u"-5 seconds, 86%"_s;
        QTest::newRow("far out of range")
            << qint64(9'007'199'254'740'993) << 1e15 << u"9007199254740993 seconds, 1000000000000000%"_s;
    }
    void writesValues() {
        QFETCH(qint64, seconds);
        QFETCH(double, percent);
        const SettingsContent content =
            settingsContent({.refreshIntervalSeconds = seconds, .alertDiskThresholdPercent = percent});
        QTEST(QString(content.refreshIntervalText + u", "_s + content.diskThresholdText), "expected");
    }

    void keepsToTheStops_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("expected");
        QTest::newRow("a stop") << 35.0 << 35.0;
        QTest::newRow("between, below") << 37.4 << 35.0;
        QTest::newRow("between, above") << 38.0 << 40.0;
        QTest::newRow("below all") << 1.0 << 10.0;
        QTest::newRow("above all") << 1e12 << 120.0;
    }
    void keepsToTheStops() {
        QFETCH(double, value);
        QTEST(refreshIntervalRange.nearestStop(value), "expected");
    }

    void savesPinsAtOnce() {
        SettingsRig rig;
        rig.showSettings();
        rig.click(title(MenuBarItem::peakTemp));
        QCOMPARE(rig.savedPins(),
                 (MenuBarItemSet{MenuBarItem::socTemp, MenuBarItem::peakTemp, MenuBarItem::serverStatus}));
        for (const PinPreset preset : {PinPreset::All, PinPreset::Resources, PinPreset::Standard}) {
            rig.click(settingsCaption(preset));
            QCOMPARE(rig.savedPins(), pins(preset));
            for (const MenuBarItem item : allMenuBarItems)
                QCOMPARE(rig.item(title(item))->property("checked").toBool(), pins(preset).contains(item));
        }
        rig.click(title(MenuBarItem::socTemp));
        QQuickItem* const status = rig.item(title(MenuBarItem::serverStatus));
        status->forceActiveFocus();
        rig.press(Qt::Key_Space);
        QVERIFY(rig.savedPins().empty());
        QVERIFY(status->hasActiveFocus());
        rig.press(Qt::Key_Return);
        QCOMPARE(rig.savedPins(), MenuBarItemSet{MenuBarItem::serverStatus});
        rig.click(u"label"_s);
        QVERIFY(!rig.savedSettings().showMenuBarLabel);
    }

    void savesTheRestWhenDone() {
        SettingsRig rig;
        // as edited by hand
        rig.store->editSettings([](AppSettings& settings) { settings.refreshIntervalSeconds = 33; });
        rig.showSettings();
        rig.item(u"interval"_s)->childItems().constLast()->forceActiveFocus();
        rig.press(Qt::Key_Right);
        QCOMPARE(rig.store->settings().refreshIntervalSeconds, 40);
        rig.press(Qt::Key_Right, {}, 30);
        QCOMPARE(rig.store->settings().refreshIntervalSeconds, 120);
        rig.press(Qt::Key_Left);
        rig.item(u"disk"_s)->childItems().constLast()->forceActiveFocus();
        rig.press(Qt::Key_Left, {}, 30);
        rig.item(u"sound"_s)->forceActiveFocus();
        rig.press(Qt::Key_Space);
        QCOMPARE(rig.store->settings().refreshIntervalSeconds, 115);
        QCOMPARE(rig.store->findChild<QTimer*>()->interval(), 115'000);
        QCOMPARE(rig.store->settings().alertDiskThresholdPercent, 70.0);
        QVERIFY(!rig.store->settings().soundAlerts);
        QCOMPARE(rig.savedSettings().refreshIntervalSeconds, 33);
        QCOMPARE(rig.savedSettings().alertDiskThresholdPercent, 90.0);
        QVERIFY(rig.savedSettings().soundAlerts);

        rig.press(Qt::Key_Escape);
        QVERIFY(rig.isDismissed());
        QCOMPARE(rig.savedSettings().refreshIntervalSeconds, 33);
        rig.showSettings();
        rig.click(u"done"_s);
        QVERIFY(rig.isDismissed());
        QCOMPARE(rig.savedSettings(), rig.store->settings());
    }

    void dragsTheSlider() {
        SettingsRig rig;
        rig.showSettings();
        QQuickItem* const slider = rig.item(u"interval"_s)->childItems().constLast();
        const auto at = [slider](double part) {
            return slider->mapToScene({part * slider->width(), slider->height() / 2}).toPoint();
        };
        QTest::mousePress(rig.view.get(), Qt::LeftButton, {}, at(0.18));
        for (int step = 1; step <= 10; ++step)
            QTest::mouseMove(rig.view.get(), at(0.18 + step * 0.08));
        QTest::mouseRelease(rig.view.get(), Qt::LeftButton, {}, at(1));
        QCOMPARE(rig.store->settings().refreshIntervalSeconds, 120);
        QCOMPARE(rig.savedSettings().refreshIntervalSeconds, 30);
    }

    void quitsSaved() {
        SettingsRig rig;
        rig.showSettings();
        rig.store->editSettings([](AppSettings& settings) { settings.soundAlerts = false; },
                                ServerStore::Saving::later);
        bool isSaved = false;
        connect(rig.model, &SettingsModel::quitRequested, this, [&] { isSaved = !rig.savedSettings().soundAlerts; });
        rig.click(u"quit"_s);
        QVERIFY(isSaved);
        QVERIFY(!rig.isDismissed());
    }

    void goesElsewhereByTheKeyboard() {
        SettingsRig rig;
        rig.ui.setOnboardingStep(3);
        rig.showSettings();
        QQuickItem* const scroll = rig.item(u"scroll"_s);
        QStringList expected{u"done"_s, u"All"_s, u"Resources"_s, u"Reset"_s};
        for (const MenuBarItem item : allMenuBarItems)
            expected += title(item);
        expected += {u"label"_s, {}, {}, u"sound"_s, u"tour"_s, u"donate"_s, u"web"_s, u"quit"_s};
        QStringList visited;
        while (visited.size() < expected.size()) {
            rig.press(Qt::Key_Tab);
            const QQuickItem* const focused = rig.view->activeFocusItem();
            visited.append(focused->objectName());
            if (scroll->isAncestorOf(focused)) {
                const double top = focused->mapToItem(scroll, {0, 0}).y();
                QVERIFY2(top >= 0 && top + focused->height() <= scroll->height(), qPrintable(visited.join(u' ')));
            }
            if (QStringList{u"tour"_s, u"donate"_s, u"web"_s}.contains(focused->objectName()))
                rig.press(Qt::Key_Return);
        }
        QCOMPARE(visited, expected);
        QCOMPARE(rig.ui.onboardingStep(), 0);
        QVERIFY(rig.ui.showingOnboarding());
        QCOMPARE(rig.opened, QStringList({u"https://ko-fi.com/tarnwick"_s, u"https://tarnwick.example"_s}));
    }
};

QTEST_MAIN(SettingsTest)
#include "tst_settings.moc"
