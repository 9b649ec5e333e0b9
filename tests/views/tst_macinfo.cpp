#include "SheetRig.h"
#include "computer/MacInfoModel.h"

#include <QAbstractItemModelTester>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

struct MacInfoRig : SheetRig {
    const ViewCollaborators collaborators{.computer = sample.computer};
    QPointer<MacInfoModel> model; ///< of the sheet that is shown

    MacInfoRig() {
        auto made = std::make_unique<MacInfoModel>(*store, ui, collaborators);
        model = made.get();
        showSheet(u"computer/MacInfoSheet"_s, u"mac"_s, std::move(made));
    }
    /// Another snapshot finds the CPU that busy.
    void becomeBusy(double percent) {
        sample.letTimePass();
        sample.setCpu(percent);
    }
};

MacInfoContent contentOf(const MacHardwareInfo& info, const MenuBarItemSet& pinned = {}) {
    return macInfoContent(info, pinned, false);
}

} // namespace

class MacInfoTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void describesTheMachine() {
        const MacInfoContent content = contentOf(SampleComputer::macMini(), pins(PinPreset::Standard));
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
        QCOMPARE(contentOf({}).fleet.symbol, u"circle"_s);
        QCOMPARE(content.sensors.at(1).temperature, u"55.0 \u00b0C"_s);
        QCOMPARE(content.sensors.at(1).role, ColorRole::Role::Green);
    }

    void coloursByScale_data() {
        using enum ColorRole::Role;
        QTest::addColumn<double>("value");
        QTest::addColumn<ColorRole::Role>("load");
        QTest::addColumn<ColorRole::Role>("heat");
        QTest::newRow("0") << 0.0 << Green << Green;
        QTest::newRow("below 55") << 54.99 << Green << Green;
        QTest::newRow("55") << 55.0 << Green << Orange;
        QTest::newRow("below 65") << 64.99 << Green << Orange;
        QTest::newRow("65") << 65.0 << Orange << Orange;
        QTest::newRow("below 75") << 74.99 << Orange << Orange;
        QTest::newRow("75") << 75.0 << Orange << Red;
        QTest::newRow("below 85") << 84.99 << Orange << Red;
        QTest::newRow("85") << 85.0 << Red << Red;
    }
    void coloursByScale() {
        QFETCH(double, value);
        MacHardwareInfo info;
        info.cpuUsagePercent = info.gpuUsagePercent = info.ramUsagePercent = value;
        info.avgSocTemp = info.peakSocTemp = value;
        info.ssdTemp = value;
        const MacInfoContent content = contentOf(info);
        QTEST(content.thermalRole, "heat");
        for (int tile = 0; tile < 3; ++tile) {
            QTEST(content.loads.tile(tile).role, "load");
            QTEST(content.thermals.tile(tile).role, "heat");
        }
    }

    void fallsBack() {
        MacHardwareInfo info;
        for (const auto& [cpuCores, subtitle] :
             {std::pair(u""_s, u" Cores"_s), {u"8"_s, u"8 Cores"_s}, {u" 8"_s, u" Cores"_s}}) {
            info.cpuCores = cpuCores;
            QCOMPARE(contentOf(info).loads.tile(0).subtitle, subtitle);
        }
        QCOMPARE(contentOf(info).thermals.tile(2).value, u"--"_s);
        QCOMPARE(contentOf(info).thermals.tile(2).role, ColorRole::Role::Gray);
        QCOMPARE(contentOf(info).sensorsCaption, u"Individual Thermal Sensors (0)"_s);
    }

    void rowsChangeInPlace() {
        RowListModel<MacSensorRow> model;
        const QAbstractItemModelTester tester(&model);
        const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
        QList<MacSensorRow> rows = contentOf(SampleComputer::macMini()).sensors;
        model.setRows(rows);
        QCOMPARE(model.rowCount(), 4);
        rows[2].temperature = u"40.0 \u00b0C"_s;
        model.setRows(rows);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes.at(0).at(0).toModelIndex().row(), 2);
        rows.removeFirst();
        model.setRows(rows);
        QCOMPARE(model.rows(), rows);
        QCOMPARE(resets.count(), 0);
    }

    void tilesPinThemselves() {
        using enum MenuBarItem;
        MacInfoRig rig;
        const QList<std::pair<QString, MenuBarItemSet>> presses{
            {u"SSD Storage"_s, {socTemp, ssdTemp, serverStatus}},
            {u"SoC Average"_s, {ssdTemp, serverStatus}},
            {u"Server Fleet Status"_s, {ssdTemp}},
        };
        for (const auto& [tile, pinned] : presses) {
            press(*rig.view, tile);
            QCOMPARE(rig.savedPins(), pinned);
        }
        // The tile keeps the keyboard while what it shows changes.
        rig.item(u"CPU Usage"_s)->forceActiveFocus(Qt::TabFocusReason);
        rig.SheetRig::press(Qt::Key_Space);
        QCOMPARE(rig.savedPins(), (MenuBarItemSet{ssdTemp, cpuUsage}));
        rig.SheetRig::press(Qt::Key_Return);
        QCOMPARE(rig.savedPins(), MenuBarItemSet{ssdTemp});
        rig.SheetRig::press(Qt::Key_Tab);
        rig.SheetRig::press(Qt::Key_Space);
        QCOMPARE(rig.savedPins(), (MenuBarItemSet{ssdTemp, gpuUsage}));
    }

    void presetsReplaceThePins() {
        MacInfoRig rig;
        const QList<std::pair<QString, PinPreset>> presets{{u"Pin All (7 Items)"_s, PinPreset::All},
                                                           {u"Pin Resources"_s, PinPreset::Resources},
                                                           {u"Pin All Temps"_s, PinPreset::Thermals},
                                                           {u"Reset Default"_s, PinPreset::Standard}};
        for (const auto& [button, preset] : presets) {
            press(*rig.view, button);
            QCOMPARE(rig.savedPins(), pins(preset));
        }
        rig.click(u"done"_s);
        QVERIFY(rig.isDismissed());
    }

    void sensorsOpenAndClose() {
        MacInfoRig rig;
        QCOMPARE(rig.item(u"sensors"_s)->property("text").toString(), u"Individual Thermal Sensors (4)"_s);
        QVERIFY(!rig.item(u"PMU tdev2"_s));
        press(*rig.view, u"sensors"_s);
        QVERIFY(rig.ui.showingAllSensors());
        QVERIFY(rig.item(u"PMU tdev2"_s));

        // A fresh snapshot leaves the page where it is.
        QQuickItem* const scroll = rig.item(u"scroll"_s);
        QTRY_VERIFY(scroll->property("contentHeight").toReal() > scroll->height() + 200);
        scroll->setProperty("contentY", 150);
        MacHardwareInfo warmer = SampleComputer::macMini();
        warmer.sensors[0].tempCelsius = 80;
        rig.ui.setMacInfo(warmer);
        QCOMPARE(scroll->property("contentY").toReal(), 150.0);

        press(*rig.view, u"sensors"_s);
        QVERIFY(!rig.ui.showingAllSensors());
        QTRY_VERIFY(!rig.item(u"PMU tdev2"_s));
    }

    void snapshotsOnlyWhileOpen() {
        MacInfoRig rig;
        QCOMPARE(rig.ui.macInfo(), SampleComputer::macMini());
        rig.becomeBusy(50);
        press(*rig.view, u"refresh"_s);
        QCOMPARE(rig.ui.macInfo()->cpuUsagePercent, 50.0);
        rig.becomeBusy(75);
        QTRY_COMPARE_WITH_TIMEOUT(rig.ui.macInfo()->cpuUsagePercent, 75.0, 10000);
        QCOMPARE(MacInfoModel::snapshotInterval, std::chrono::milliseconds(2500));

        rig.view.reset();
        QVERIFY2(!rig.model, "its timer would go on");
        QVERIFY(rig.ui.macInfo().has_value());
    }
};

QTEST_MAIN(MacInfoTest)
#include "tst_macinfo.moc"
