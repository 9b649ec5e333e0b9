#include "Fixture.h"
#include "ViewRig.h"
#include "computer/MacInfoModel.h"
#include "controls/Sparkline.h"

#include <QPainter>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

struct MacInfoRig : ViewRig {
    MacInfoRig() { show<MacInfoModel>(u"computer/MacInfoSheet"_s, u"mac"_s); }
    /// Another snapshot finds the CPU that busy.
    void becomeBusy(double percent) {
        sample.letTimePass();
        sample.setCpu(percent);
    }
};

MacInfoContent contentOf(const MacHardwareInfo& info, const MenuBarItemSet& pinned = {}) {
    return macInfoContent(info, pinned, false, macWords);
}

} // namespace

class MacInfoTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void describesTheMachine() {
        const MacInfoContent content = contentOf(SampleComputer::macMini(), pins(PinPreset::Standard));
        QStringList lines{content.heading, content.identity};
        for (const MacTile& tile : content.loads.tiles + content.thermals.tiles)
            lines += QStringList{tile.title, tile.value, tile.subtitle, tile.hint, tile.help}.join(u'|');
        for (const MacFact& fact : content.facts)
            lines += QStringList{fact.symbol, fact.label, fact.value}.join(u'|');
        for (const MacSensorRow& sensor : content.sensors)
            lines += QStringList{sensor.name, sensor.category, sensor.temperature}.join(u'|');
        QCOMPARE(lines, fixtureLines(u"views/machine.txt"_s));
        QCOMPARE(content.sensors.at(1).role, ColorRole::Role::Green);
        QCOMPARE(content.fleet.symbol, u"checkmark.circle.fill"_s);
        QCOMPARE(contentOf({}).fleet.symbol, u"circle"_s);
    }

    void coloursByScale() {
        using enum ColorRole::Role;
        const std::tuple<double, ColorRole::Role, ColorRole::Role> rows[] = {
            {0.01, Green, Green},   {54.99, Green, Green},  {55.0, Green, Orange},
            {64.99, Green, Orange}, {65.0, Orange, Orange}, {74.99, Orange, Orange},
            {75.0, Orange, Red},    {84.99, Orange, Red},   {85.0, Red, Red},
        };
        for (const auto& [value, load, heat] : rows) {
            MacHardwareInfo info;
            info.cpuUsagePercent = info.ramUsagePercent = value;
            info.gpuUsagePercent = value;
            info.avgSocTemp = info.peakSocTemp = value;
            info.ssdTemp = value;
            const MacInfoContent content = contentOf(info);
            QCOMPARE(content.thermalRole, heat);
            for (int tile = 0; tile < 3; ++tile) {
                QCOMPARE(content.loads.tile(tile).role, load);
                QCOMPARE(content.thermals.tile(tile).role, heat);
            }
        }
    }

    void loadsHaveTheirTrends() {
        ServerTrend trend;
        for (const double seconds : {0.0, 60.0}) {
            ServerMetrics metrics;
            metrics.cpuPercent = 10;
            metrics.memoryUsedMB = 20;
            metrics.memoryTotalMB = 100;
            metrics.lastChecked = {seconds};
            trend.note(metrics);
        }
        const MacInfoContent content = macInfoContent({}, {}, false, macWords, &trend);
        QStringList texts;
        for (const MacTile& tile : content.loads.tiles + content.thermals.tiles)
            texts += tile.trend.text;
        QCOMPARE(texts, (QStringList{u"10% in the last minute"_s, {}, u"20% in the last minute"_s, {}, {}, {}}));
    }

    /// Height and colour say the state.
    void drawsTheStatesStrip() {
        Sparkline strip;
        strip.setSize({100, 20});
        strip.setBarColors({Qt::green, Qt::yellow, Qt::magenta, Qt::red});
        strip.setTrend({.points = {{0, 0.25}, {0.5, 0}, {0.5, 1}, {1, 0}}, .isStepped = true});
        QImage drawn(100, 20, QImage::Format_RGB32);
        drawn.fill(Qt::white);
        QPainter painter(&drawn);
        strip.paint(&painter);
        const QList<QColor> seen{drawn.pixelColor(25, 2), drawn.pixelColor(25, 17), drawn.pixelColor(75, 2)};
        QCOMPARE(seen, (QList<QColor>{Qt::white, Qt::green, Qt::red}));
    }

    void fallsBack() {
        MacHardwareInfo info;
        for (const auto& [cpuCores, subtitle] :
             {std::pair(u""_s, u" Cores"_s), {u"8"_s, u"8 Cores"_s}, {u" 8"_s, u" Cores"_s}}) {
            info.cpuCores = cpuCores;
            QCOMPARE(contentOf(info).loads.tile(0).subtitle, subtitle);
        }
        const MacInfoContent unknown = contentOf(info);
        QCOMPARE(unknown.thermalRole, ColorRole::Role::Gray);
        for (const MacTile& tile : unknown.thermals.tiles + unknown.loads.tiles.mid(1, 1)) {
            QCOMPARE(tile.value, u"--"_s);
            QCOMPARE(tile.role, ColorRole::Role::Gray);
        }
        QCOMPARE(contentOf(info).sensorsCaption, u"Individual Thermal Sensors (0)"_s);
    }

    void pinsFromTilesAndPresets() {
        using enum MenuBarItem;
        MacInfoRig rig;
        const std::pair<QString, MenuBarItemSet> rows[] = {
            {u"SSD Storage"_s, {socTemp, ssdTemp, serverStatus}},
            {u"SoC Average"_s, {ssdTemp, serverStatus}},
            {u"Pin All (7 Items)"_s, pins(PinPreset::All)},
            {u"Pin Resources"_s, pins(PinPreset::Resources)},
            {u"Reset Default"_s, pins(PinPreset::Standard)},
            {u"Pin All Temps"_s, pins(PinPreset::Thermals)},
            {u"Server Fleet Status"_s, {socTemp, peakTemp, ssdTemp, serverStatus}},
        };
        for (const auto& [button, pinned] : rows) {
            rig.click(button);
            QCOMPARE(rig.savedPins(), pinned);
        }
        rig.click(u"Reset Default"_s);
        // The tile keeps the keyboard while what it shows changes.
        rig.item(u"CPU Usage"_s)->forceActiveFocus(Qt::TabFocusReason);
        rig.press(Qt::Key_Space);
        QCOMPARE(rig.savedPins(), (MenuBarItemSet{socTemp, serverStatus, cpuUsage}));
        rig.press(Qt::Key_Return);
        QCOMPARE(rig.savedPins(), (MenuBarItemSet{socTemp, serverStatus}));
        rig.press(Qt::Key_Tab);
        rig.press(Qt::Key_Space);
        QCOMPARE(rig.savedPins(), (MenuBarItemSet{socTemp, serverStatus, gpuUsage}));
        rig.click(u"done"_s);
        QCOMPARE(rig.closings(), 1);
    }

    void sensorsOpenAndClose() {
        MacInfoRig rig;
        QCOMPARE(rig.text(u"sensors"_s), u"Individual Thermal Sensors (4)"_s);
        QVERIFY(!rig.item(u"PMU tdev2"_s));
        rig.click(u"sensors"_s);
        QVERIFY(rig.ui.showingAllSensors() && rig.item(u"PMU tdev2"_s));

        // A fresh snapshot leaves the page where it is.
        QQuickItem* const scroll = rig.item(u"scroll"_s);
        QTRY_VERIFY(scroll->property("contentHeight").toReal() > scroll->height() + 200);
        scroll->setProperty("contentY", 150);
        MacHardwareInfo warmer = SampleComputer::macMini();
        warmer.sensors[0].tempCelsius = 80;
        rig.ui.setMacInfo(warmer);
        QCOMPARE(scroll->property("contentY").toReal(), 150.0);

        rig.click(u"sensors"_s);
        QVERIFY(!rig.ui.showingAllSensors());
        QTRY_VERIFY(!rig.item(u"PMU tdev2"_s));
    }

    void tellsTheWholeOfALongFact() {
        MacInfoRig rig;
        const QString build = rig.sample.kernel.os.versionText = u"Version 14.5 "_s.repeated(10).trimmed();
        rig.becomeBusy(50);
        rig.click(u"refresh"_s);
        QQuickItem* const scroll = rig.item(u"scroll"_s);
        scroll->setProperty("contentY", rig.item(build)->mapToItem(scroll, {0, -200}).y());
        for (const int x : {0, 1})
            QTest::mouseMove(rig.view.get(), middle(rig.item(build)) + QPoint(x, 0));
        QTRY_COMPARE(rig.items(build).size(), 2);
    }

    void takesSnapshotsWhileOpen() {
        MacInfoRig rig;
        QCOMPARE(rig.ui.macInfo(), SampleComputer::macMini());
        rig.becomeBusy(50);
        rig.click(u"refresh"_s);
        QCOMPARE(rig.ui.macInfo()->cpuUsagePercent, 50.0);
        rig.becomeBusy(75);
        QTRY_COMPARE_WITH_TIMEOUT(rig.ui.macInfo()->cpuUsagePercent, 75.0, 10000);
        QCOMPARE(MacInfoModel::snapshotInterval, std::chrono::milliseconds(2500));
        rig.view.reset();
        QVERIFY(rig.ui.macInfo().has_value());
    }
};

QTEST_MAIN(MacInfoTest)
#include "tst_macinfo.moc"
