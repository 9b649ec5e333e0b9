#include "MacHardwareCollector.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

using Readings = QList<TemperatureReading>;

QStringList namesOf(const ThermalSummary& summary) {
    QStringList names;
    for (const MacThermalSensor& sensor : summary.sensors)
        names.append(sensor.name);
    return names;
}

} // namespace

class ThermalSurveyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void classifiesByName() {
        const QList<std::pair<QString, QString>> categories{
            {u"NAND CH0 temp"_s, u"Storage (SSD)"_s},
            {u"tdie ssd"_s, u"Storage (SSD)"_s},
            {u"PMU TDie7"_s, u"SoC Die (CPU/GPU)"_s},
            {u"tdev tdie"_s, u"SoC Die (CPU/GPU)"_s},
            {u"PMU2 tdev3"_s, u"Power Delivery (PMU)"_s},
            {u"gas gauge battery"_s, u"Thermal Zone"_s},
            {u""_s, u"Thermal Zone"_s},
        };
        for (const auto& [name, category] : categories)
            QCOMPARE(surveyThermals(Readings{{name, 40.0}}).sensors, (QList<MacThermalSensor>{{name, 40.0, category}}));
    }

    void condenses() {
        const ThermalSummary summary = surveyThermals(
            Readings{{u"tdie1"_s, 40.0}, {u"tdev1"_s, 50.0}, {u"tdie2"_s, 60.0}, {u"tdie3"_s, std::nullopt}});
        QCOMPARE(summary.avgSoc, 50.0);
        QCOMPARE(summary.peak, 60.0);
        QCOMPARE(summary.ssd, std::nullopt);
        QCOMPARE(summary.sensors.size(), 3);
    }

    void lastStorageReadingCounts() {
        const ThermalSummary summary =
            surveyThermals(Readings{{u"NAND 0"_s, 61.0}, {u"NAND 1"_s, 38.0}, {u"NAND 2"_s, 3.0}, {u"SSD"_s, {}}});
        QCOMPARE(summary.ssd, std::optional(38.0));
    }

    void storageAndZonesStayOutOfTheSummary() {
        const ThermalSummary summary = surveyThermals(Readings{{u"NAND"_s, 80.0}, {u"acpitz"_s, 90.0}});
        QCOMPARE(summary.avgSoc, 0.0);
        QCOMPARE(summary.peak, 0.0);
        QCOMPARE(namesOf(summary), (QStringList{u"acpitz"_s, u"NAND"_s}));
    }

    void sortsHottestFirstAndKeepsTies() {
        Readings readings;
        QStringList expected{u"Sensor"_s};
        for (int number = 0; number < 40; ++number) { // a short list is sorted in order by any sort
            readings.append({u"%1"_s.arg(number), number % 2 == 0 ? 50.0 : 40.0});
            expected.insert(number % 2 == 0 ? 1 + number / 2 : expected.size(), u"%1"_s.arg(number));
        }
        readings.append({std::nullopt, 60.0});
        QCOMPARE(namesOf(surveyThermals(readings)), expected);
    }

    void nothingToRead() {
        QCOMPARE(surveyThermals(std::nullopt), ThermalSummary{});
        QCOMPARE(surveyThermals(Readings{}), ThermalSummary{});
    }

    void quickReadings() {
        const ThermalSummary expected{.avgSoc = 55, .peak = 55, .ssd = 33, .sensors = {}};
        const Readings readings{{u"tdie"_s, 55.0}, {u"SSD"_s, 33.0}};
        QCOMPARE(MacHardwareCollector::queryQuickThermals(readings), expected);
        QCOMPARE(MacHardwareCollector::queryQuickSocTemp(readings), std::optional(55.0));
        QCOMPARE(MacHardwareCollector::queryQuickSocTemp(Readings{{u"SSD"_s, 33.0}}), std::nullopt);
    }
};

QTEST_APPLESS_MAIN(ThermalSurveyTest)
#include "tst_thermalsurvey.moc"
