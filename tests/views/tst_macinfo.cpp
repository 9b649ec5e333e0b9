#include "SheetRig.h"
#include "computer/MacInfoModel.h"
#include "computer/SensorListModel.h"

#include <QAbstractItemModelTester>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

MacHardwareInfo macMini() {
    MacHardwareInfo info;
    info.modelName = u"Mac mini"_s;
    info.modelIdentifier = u"Mac14,12"_s;
    info.chip = u"Apple M2 Pro"_s;
    info.cpuCores = u"10 Cores (4 Performance + 6 Efficiency)"_s;
    info.gpuCores = u"Integrated GPU (Metal)"_s;
    info.memoryString = u"16 GB Unified Memory"_s;
    info.osVersion = u"macOS 14.5"_s;
    info.osBuild = u"Version 14.5 (Build 23F79)"_s;
    info.kernelVersion = u"23.5.0"_s;
    info.uptimeString = u"14d 6h 0m"_s;
    info.thermalState = u"Nominal (Cool & Quiet)"_s;
    info.avgSocTemp = 41.25;
    info.peakSocTemp = 57.8;
    info.ssdTemp = 32;
    info.cpuUsagePercent = 12.5;
    info.gpuUsagePercent = 8;
    info.ramUsagePercent = 69;
    info.ramUsedGB = 11.04;
    info.ramTotalGB = 16;
    info.sensors = {{u"PMU tdie1"_s, 75, u"SoC Die (CPU/GPU)"_s},
                    {u"NAND CH0 temp"_s, 54.95, u"Storage (SSD)"_s},
                    {u"NAND CH0 temp"_s, 31.04, u"Storage (SSD)"_s}};
    return info;
}

struct MacInfoRig : SheetRig {
    const ViewCollaborators collaborators{.computer = sample.computer};
    QPointer<MacInfoModel> model; ///< of the sheet that is shown

    void showMacInfo() {
        auto made = std::make_unique<MacInfoModel>(*store, ui, collaborators);
        model = made.get();
        showSheet(u"computer/MacInfoSheet"_s, u"mac"_s, std::move(made));
    }
};

} // namespace

class MacInfoTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tellsTheMachine() {
        const MacInfoContent content = macInfoContent(macMini(), pins(PinPreset::Standard), false);
        QCOMPARE(content.heading, u"Mac mini (Apple M2 Pro)"_s);
        QCOMPARE(content.identity, u"Mac14,12 \u2022 macOS 14.5"_s);
        QStringList tiles;
        for (const MacTile& tile : content.loads.tiles + content.thermals.tiles)
            tiles += QStringList{tile.title, tile.value, tile.subtitle, tile.hint, tile.help}.join(u'|');
        QCOMPARE(tiles, (QStringList{
                            u"CPU Usage|12%|10 Cores|Pin to Bar +|Click to add CPU Usage to menu bar"_s,
                            u"GPU Usage|8%|Integrated GPU (Metal)|Pin to Bar +|Click to add GPU Usage to menu bar"_s,
                            u"Unified RAM|69%|11.0/16GB|Pin to Bar +|Click to add Unified RAM to menu bar"_s,
                            u"SoC Average|41.2\u00b0C|CPU & GPU Die||Click to remove SoC Average from menu bar"_s,
                            u"Peak Core|57.8\u00b0C|Hotspot Core|Pin to Bar +|Click to add Peak Core to menu bar"_s,
                            u"SSD Storage|32.0\u00b0C|NAND Flash|Pin to Bar +|Click to add SSD Storage to menu bar"_s,
                        }));
        QStringList facts;
        for (const MacFact& fact : content.facts)
            facts += fact.symbol + u'|' + fact.label + u'|' + fact.value;
        QCOMPARE(facts, (QStringList{u"sparkle|Chip|Apple M2 Pro"_s,
                                     u"cpu|CPU Cores|10 Cores (4 Performance + 6 Efficiency)"_s,
                                     u"square.grid.2x2|GPU Cores|Integrated GPU (Metal)"_s,
                                     u"memorychip|Unified Memory|16 GB Unified Memory"_s,
                                     u"desktopcomputer|Model Number|Mac14,12"_s,
                                     u"apple.logo|OS Version|Version 14.5 (Build 23F79)"_s, u"terminal|Kernel|23.5.0"_s,
                                     u"clock|System Uptime|14d 6h 0m"_s}));
        QCOMPARE(content.fleet.symbol, u"checkmark.circle.fill"_s);
        QCOMPARE(macInfoContent(macMini(), {}, false).fleet.symbol, u"circle"_s);
        QCOMPARE(content.sensors.at(1).temperature, u"55.0 \u00b0C"_s);
        QCOMPARE(content.sensors.at(1).role, ColorRole::Role::Green);
    }

    void coloursByScale() {
        using enum ColorRole::Role;
        using Roles = QList<ColorRole::Role>;
        const auto roles = [](double value) {
            MacHardwareInfo info = macMini();
            info.cpuUsagePercent = info.gpuUsagePercent = info.ramUsagePercent = value;
            info.avgSocTemp = info.peakSocTemp = value;
            info.ssdTemp = value;
            const MacInfoContent content = macInfoContent(info, {}, false);
            Roles all{content.thermalRole};
            for (const MacTile& tile : content.loads.tiles + content.thermals.tiles)
                all += tile.role;
            return all;
        };
        const auto scale = [](ColorRole::Role load, ColorRole::Role heat) {
            return Roles{heat, load, load, load, heat, heat, heat};
        };
        QCOMPARE(roles(0), scale(Green, Green));
        QCOMPARE(roles(54.99), scale(Green, Green));
        QCOMPARE(roles(55), scale(Green, Orange));
        QCOMPARE(roles(64.99), scale(Green, Orange));
        QCOMPARE(roles(65), scale(Orange, Orange));
        QCOMPARE(roles(74.99), scale(Orange, Orange));
        QCOMPARE(roles(75), scale(Orange, Red));
        QCOMPARE(roles(84.99), scale(Orange, Red));
        QCOMPARE(roles(85), scale(Red, Red));
    }

    void fallsBack() {
        MacHardwareInfo info = macMini();
        info.ssdTemp.reset();
        info.sensors.clear();
        for (const auto& [cpuCores, subtitle] :
             {std::pair(u""_s, u" Cores"_s), {u"8"_s, u"8 Cores"_s}, {u" 8"_s, u" Cores"_s}}) {
            info.cpuCores = cpuCores;
            QCOMPARE(macInfoContent(info, {}, true).loads.tile(0).subtitle, subtitle);
        }
        const MacInfoContent content = macInfoContent(info, {}, true);
        QCOMPARE(content.thermals.tile(2).value, u"--"_s);
        QCOMPARE(content.thermals.tile(2).role, ColorRole::Role::Gray);
        QCOMPARE(content.sensorsCaption, u"Individual Thermal Sensors (0)"_s);
    }

    void sensorRowsChangeInPlace() {
        SensorListModel model;
        const QAbstractItemModelTester tester(&model);
        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
        QList<MacSensorRow> rows = macInfoContent(macMini(), {}, true).sensors;
        model.setRows(rows);
        QCOMPARE(model.rowCount(), 3);
        rows[2].temperature = u"40.0 \u00b0C"_s;
        model.setRows(rows);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes.at(0).at(0).toModelIndex().row(), 2);
        rows.removeFirst();
        model.setRows(rows);
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(model.data(model.index(1), SensorListModel::SensorRole).value<MacSensorRow>(), rows.at(1));
        QCOMPARE(resets.count(), 0);
    }

    void tilesPinThemselves() {
        using enum MenuBarItem;
        MacInfoRig rig;
        rig.showMacInfo();
        press(*rig.view, u"SSD Storage"_s);
        QCOMPARE(rig.savedPins(), (MenuBarItemSet{socTemp, ssdTemp, serverStatus}));
        press(*rig.view, u"SoC Average"_s);
        QCOMPARE(rig.savedPins(), (MenuBarItemSet{ssdTemp, serverStatus}));
        press(*rig.view, u"Server Fleet Status"_s);
        QCOMPARE(rig.savedPins(), MenuBarItemSet{ssdTemp});

        // The tile keeps the keyboard while what it shows changes.
        findItem(rig.view->rootObject(), u"CPU Usage"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(rig.view.get(), Qt::Key_Space);
        QCOMPARE(rig.savedPins(), (MenuBarItemSet{ssdTemp, cpuUsage}));
        QTest::keyClick(rig.view.get(), Qt::Key_Return);
        QCOMPARE(rig.savedPins(), MenuBarItemSet{ssdTemp});
        QTest::keyClick(rig.view.get(), Qt::Key_Tab);
        QTest::keyClick(rig.view.get(), Qt::Key_Space);
        QCOMPARE(rig.savedPins(), (MenuBarItemSet{ssdTemp, gpuUsage}));
    }

    void presetsReplaceThePins() {
        MacInfoRig rig;
        rig.showMacInfo();
        const QList<std::pair<QString, MenuBarItemSet>> presets{{u"Pin All (7 Items)"_s, pins(PinPreset::All)},
                                                                {u"Pin Resources"_s, pins(PinPreset::Resources)},
                                                                {u"Pin All Temps"_s, pins(PinPreset::Thermals)},
                                                                {u"Reset Default"_s, pins(PinPreset::Standard)}};
        for (const auto& [button, pins] : presets) {
            press(*rig.view, button);
            QCOMPARE(rig.savedPins(), pins);
        }
        rig.click(u"done"_s);
        QVERIFY(rig.isDismissed());
    }

    void sensorsOpenAndClose() {
        MacInfoRig rig;
        rig.showMacInfo();
        rig.ui.setMacInfo(macMini());
        auto* header = findItem(rig.view->rootObject(), u"sensors"_s);
        QCOMPARE(header->property("text").toString(), u"Individual Thermal Sensors (3)"_s);
        QVERIFY(!findItem(rig.view->rootObject(), u"NAND CH0 temp"_s));

        press(*rig.view, u"sensors"_s);
        QVERIFY(rig.ui.showingAllSensors());
        rig.ui.setMacInfo(macMini());
        QVERIFY(findItem(rig.view->rootObject(), u"NAND CH0 temp"_s));

        // A fresh snapshot leaves the page where it is.
        auto* scroll = findItem(rig.view->rootObject(), u"scroll"_s);
        QTRY_VERIFY(scroll->property("contentHeight").toReal() > scroll->height() + 200);
        scroll->setProperty("contentY", 150);
        MacHardwareInfo warmer = macMini();
        warmer.sensors[0].tempCelsius = 80;
        rig.ui.setMacInfo(warmer);
        QCOMPARE(scroll->property("contentY").toReal(), 150.0);

        press(*rig.view, u"sensors"_s);
        QVERIFY(!rig.ui.showingAllSensors());
        QTRY_VERIFY(!findItem(rig.view->rootObject(), u"NAND CH0 temp"_s));
    }

    void snapshotsOnlyWhileOpen() {
        MacInfoRig rig;
        rig.showMacInfo();
        QVERIFY(rig.ui.macInfo().has_value());

        rig.ui.setMacInfo(macMini());
        press(*rig.view, u"refresh"_s);
        QVERIFY(rig.ui.macInfo() != macMini());

        rig.ui.setMacInfo(macMini());
        QTRY_VERIFY_WITH_TIMEOUT(rig.ui.macInfo() != macMini(), 10000);

        QCOMPARE(MacInfoModel::snapshotInterval, std::chrono::milliseconds(2500));
        rig.view.reset();
        QVERIFY2(!rig.model, "its timer would go on");
        QVERIFY(rig.ui.macInfo().has_value());
    }
};

QTEST_MAIN(MacInfoTest)
#include "tst_macinfo.moc"
