#include "ViewRig.h"
#include "settings/SettingsModel.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

struct SettingsRig : ViewRig {
    SettingsModel* showSettings() { return show<SettingsModel>(u"settings/SettingsView"_s, u"settings"_s); }
    [[nodiscard]] QQuickItem* slider(const QString& name) const { return item(name)->childItems().constLast(); }
};

} // namespace

class SettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writesValues() {
        const std::tuple<qint64, double, QString> rows[] = {
            {30, 90, u"30 seconds, 90%"_s},
            {1, 84.5, u"1 seconds, 84%"_s}, // halves go to the even digit
            {-5, 85.5, u"-5 seconds, 86%"_s},
            {9'007'199'254'740'993, 1e15, u"9007199254740993 seconds, 1000000000000000%"_s},
        };
        for (const auto& [seconds, percent, text] : rows) {
            const SettingsContent content =
                settingsContent({.refreshIntervalSeconds = seconds, .alertDiskThresholdPercent = percent});
            QCOMPARE(content.refreshIntervalText + u", "_s + content.diskThresholdText, text);
        }
    }

    void keepsToTheStops() {
        for (const auto& [value, stop] :
             {std::pair(35.0, 35.0), {37.4, 35.0}, {38.0, 40.0}, {1.0, 10.0}, {1e12, 120.0}})
            QCOMPARE(refreshIntervalRange.nearestStop(value), stop);
    }

    void savesPinsAtOnce() {
        SettingsRig rig;
        rig.showSettings();
        rig.click(titleOf(MenuBarItem::peakTemp));
        QCOMPARE(rig.savedPins(),
                 (MenuBarItemSet{MenuBarItem::socTemp, MenuBarItem::peakTemp, MenuBarItem::serverStatus}));
        for (const PinPreset preset : {PinPreset::All, PinPreset::Resources, PinPreset::Standard}) {
            rig.click(settingsCaption(preset));
            QCOMPARE(rig.savedPins(), pins(preset));
            for (const MenuBarItem item : allMenuBarItems)
                QCOMPARE(rig.item(titleOf(item))->property("checked").toBool(), pins(preset).contains(item));
        }
        rig.click(titleOf(MenuBarItem::socTemp));
        QQuickItem* const status = rig.item(titleOf(MenuBarItem::serverStatus));
        status->forceActiveFocus();
        rig.press(Qt::Key_Space);
        QVERIFY(rig.savedPins().empty());
        QVERIFY(status->hasActiveFocus());
        rig.press(Qt::Key_Return);
        QCOMPARE(rig.savedPins(), MenuBarItemSet{MenuBarItem::serverStatus});
        rig.click(u"label"_s);
        QVERIFY(!rig.savedSettings().showMenuBarLabel);
        rig.item(u"share"_s)->forceActiveFocus(); // scrolls to it
        rig.click(u"share"_s);
        QCOMPARE(rig.savedSettings().shareConnections, true);
    }

    void savesTheRestWhenDone() {
        SettingsRig rig;
        const auto figures = [](const AppSettings& settings) {
            return std::tuple(settings.refreshIntervalSeconds, settings.alertDiskThresholdPercent,
                              settings.soundAlerts);
        };
        // as edited by hand
        rig.store->editSettings([](AppSettings& settings) { settings.refreshIntervalSeconds = 33; });
        rig.showSettings();
        rig.slider(u"interval"_s)->forceActiveFocus();
        for (const auto& [key, times, seconds] :
             {std::tuple(Qt::Key_Right, 1, 40), {Qt::Key_Right, 30, 120}, {Qt::Key_Left, 1, 115}}) {
            rig.press(key, times);
            QCOMPARE(rig.store->settings().refreshIntervalSeconds, seconds);
        }
        QCOMPARE(rig.store->findChild<QTimer*>()->interval(), 115'000);
        rig.slider(u"disk"_s)->forceActiveFocus();
        rig.press(Qt::Key_Left, 30);
        rig.item(u"sound"_s)->forceActiveFocus();
        rig.press(Qt::Key_Space);
        QVERIFY(figures(rig.store->settings()) == std::tuple(115, 70.0, false));

        rig.press(Qt::Key_Escape);
        QCOMPARE(rig.closings(), 1);
        QVERIFY(figures(rig.savedSettings()) == std::tuple(33, 90.0, true));
        rig.showSettings();
        rig.click(u"done"_s);
        QCOMPARE(rig.closings(), 1);
        QCOMPARE(rig.savedSettings(), rig.store->settings());
    }

    void startsAtLoginAsOnDisk() {
        SettingsRig rig;
        rig.startsAtLogin = true; // by hand
        rig.showSettings();
        const auto isChecked = [&rig] {
            return rig.item(u"login"_s)->property("checked").toBool();
        };
        QVERIFY(isChecked() && rig.store->settings().launchAtLogin);
        rig.item(u"login"_s)->forceActiveFocus();
        for (const bool starts : {false, true}) {
            rig.press(Qt::Key_Space);
            QCOMPARE(rig.startsAtLogin, starts);
            QCOMPARE(isChecked(), starts);
            QCOMPARE(rig.savedSettings().launchAtLogin, starts);
        }
        rig.isLoginItemWritable = rig.startsAtLogin = false;
        rig.showSettings();
        rig.item(u"login"_s)->forceActiveFocus();
        rig.press(Qt::Key_Space);
        QVERIFY(!isChecked() && !rig.store->settings().launchAtLogin);
    }

    void dragsTheSlider() {
        SettingsRig rig;
        rig.showSettings();
        const QQuickItem* const slider = rig.slider(u"interval"_s);
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
        const auto* const model = rig.showSettings();
        rig.store->editSettings([](AppSettings& settings) { settings.soundAlerts = false; },
                                ServerStore::Saving::later);
        bool isSaved = false;
        connect(model, &SettingsModel::quitRequested, this, [&] { isSaved = !rig.savedSettings().soundAlerts; });
        rig.click(u"quit"_s);
        QVERIFY(isSaved);
        QCOMPARE(rig.closings(), 0);
    }

    void goesElsewhereByTheKeyboard() {
        SettingsRig rig;
        rig.ui.setOnboardingStep(3);
        rig.showSettings();
        QQuickItem* const scroll = rig.item(u"scroll"_s);
        QStringList expected{u"done"_s, u"All"_s, u"Resources"_s, u"Reset"_s};
        for (const MenuBarItem item : allMenuBarItems)
            expected += titleOf(item);
        expected +=
            {u"label"_s, {}, {}, u"sound"_s, u"share"_s, u"login"_s, u"tour"_s, u"donate"_s, u"web"_s, u"quit"_s};
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
