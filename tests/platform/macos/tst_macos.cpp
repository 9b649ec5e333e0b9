#include "../FileTree.h"
#include "Desktop.h"
#include "DisplayServer.h"
#include "MacHardwareCollector.h"
#include "MacHardwareTexts.h"
#include "MacKernelReadings.h"
#include "MacTemperatureSensors.h"
#include "ScriptedMac.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStorageInfo>

#include <algorithm>
#include <utility>

using namespace tarnwick;
using namespace tarnwick::MacHardwareCollector;
using namespace tarnwick::MacHardwareTexts;

namespace {

void setKernelValue(const QString& name, const QString& value) {
    static const QRegularExpression numberForm(u"^(\\d+):(\\d+)$"_s);
    QByteArray contents = value.toUtf8();
    if (const auto match = numberForm.match(value); match.hasMatch()) {
        const qint64 number = match.captured(2).toLongLong();
        contents = QByteArray(reinterpret_cast<const char*>(&number), sizeof number)
                       .leftJustified(match.captured(1).toInt(), '\0', true);
    }
    contents.replace("\\0", QByteArray(1, '\0')).replace("\\n", "\n").replace("\\xff", "\xff");
    const QString told = name.section(u'(', 1).chopped(name.contains(u'('));
    mac.values[name.section(u' ', 0, 0).toUtf8()] = {told.isEmpty() ? std::size_t(contents.size()) : told.toUInt(),
                                                     value == u"!" ? std::nullopt : std::optional(contents)};
}

void install(const QString& line) {
    const QString name = line.section(u" ="_s, 0, 0);
    const QString value = line.section(u" ="_s, 1).mid(1);
    const QVariantList list = QJsonDocument::fromJson('[' + value.toUtf8() + ']').array().toVariantList();
    const QStringList texts = QVariant(list).toStringList();
    if (name == u"ticks")
        std::ranges::transform(list, mac.ticks.begin(), [](const QVariant& ticks) { return ticks.toUInt(); });
    else if (name == u"fails" || name == u"lacks")
        (name == u"fails" ? mac.failing : mac.lacking) = QSet(texts.begin(), texts.end());
    else if (name == u"accelerators")
        mac.accelerators = list;
    else if (name == u"sensors")
        mac.services = list;
    else if (name == u"a thousand sensors")
        mac.services = QVariantList(1000, list.first());
    else if (name == u"services")
        mac.services = list.first();
    else if (name == u"system")
        mac.process = {texts[0].toInt(), texts[1].toInt(), texts[2], texts[3].toInt()};
    else if (name == u"post")
        Desktop::post({u"Tarnwick"_s, texts[0], texts[1], texts.size() > 2 ? std::optional(texts[2]) : std::nullopt});
    else if (name == u"open")
        Desktop::openTerminal(texts.first());
    else if (!line.isEmpty())
        setKernelValue(name, value);
}

template <typename Number>
QString shown(const std::optional<Number>& number) {
    return number ? QString::number(*number) : u"absent"_s;
}

/// What is seen of a Mac whose script is complete.
struct Machine {
    MacKernelReadings kernel;
    MacTemperatureSensors sensors{[](const char* name) {
        return mac.lacking.contains(QString::fromUtf8(name)) ? nullptr : MacTemperatureSensors::inLoadedLibraries(name);
    }};
    std::optional<CpuTicks> before;

    QString kernelValue(const QString& name) {
        const std::optional<QByteArray> value = kernel.value(name.toUtf8().constData());
        if (name == u"kern.boottime")
            return uptimeText(value, 1000 + 3725);
        if (name == u"hw.model" || name == u"kern.osrelease")
            return kernelText(value).value_or(u"absent"_s);
        return shown(name == u"hw.memsize" ? kernelInt64(value) : kernelInt(value));
    }

    QString answer(const QString& question) {
        if (question == u"asked")
            return mac.calls.isEmpty() ? u"nothing"_s : mac.calls.takeFirst().replace(u'\n', u"\\n"_s);
        if (question == u"CPU") {
            const auto now = kernel.cpuTicks();
            return now ? QString::number(queryCpuUsage(*now, std::exchange(before, now))) : u"absent"_s;
        }
        if (question == u"GPU")
            return shown(queryGpuUsage(kernel.accelerators()));
        if (question == u"RAM") {
            const auto installed = kernelInt64(kernel.value("hw.memsize"));
            const SpaceUsage ram = queryRamUsage(installed, kernel.memoryPages());
            return u"%1 of %2"_s.arg(ram.usedGB * 1024).arg(ram.totalGB);
        }
        if (question == u"system") {
            const OperatingSystem system = kernel.operatingSystem();
            return systemText(system) + u", "_s + system.versionText + u", "_s +
                   thermalStateText(kernel.thermalState());
        }
        if (question == u"processor's sensors") {
            const auto readings = sensors.read(SensorGroup::processor);
            return readings ? QString::number(readings->size()) : u"absent"_s;
        }
        return question == u"sensors" ? allSensors() : kernelValue(question);
    }

    QString allSensors() {
        QList<TemperatureReading> readings;
        for (const SensorGroup group : {SensorGroup::others, SensorGroup::processor, SensorGroup::drives})
            readings += *sensors.read(group);
        std::ranges::sort(readings, {}, &TemperatureReading::position);
        QStringList texts;
        for (const MacThermalSensor& sensor : surveyThermals(readings).sensors)
            texts << u"%1=%2"_s.arg(sensor.name).arg(sensor.tempCelsius);
        return texts.join(u'|').replace(QChar(0xD800), u"\\ud800"_s);
    }
};

} // namespace

class MacOSTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void init() { mac = {}; }
    static void cleanup() {
        for (const ScriptedMac::Object& object : mac.objects)
            if (object.owners > 0 && !object.kind.startsWith(u'"'))
                mac.faults << object.kind + u" is leaked"_s;
        QCOMPARE(mac.faults, QStringList());
    }

    static void readings_data() { addCases(u"macos/readings.txt"_s); }
    static void readings() {
        QFETCH(const QStringList, lines);
        std::optional<Machine> machine;
        const auto answer = [&](const QString& question) {
            return (machine ? *machine : machine.emplace()).answer(question);
        };
        QCOMPARE(playLines(lines, install, answer), lines);
    }

    static void homeVolumeAndDisplay() {
        const auto home = MacKernelReadings().homeVolume();
        QCOMPARE(*home->size, QStorageInfo(QDir::homePath()).bytesTotal());
        QVERIFY(*home->free < *home->size);
        qputenv("HOME", "/nonexistent");
        QVERIFY(!MacKernelReadings().homeVolume());

        qunsetenv("QT_QPA_PLATFORM");
        QCOMPARE(DisplayServer::find().platform, "cocoa");
        mac.failing = {u"CGSessionCopyCurrentDictionary"_s};
        QCOMPARE(DisplayServer::find().platform, "");
    }
};

QTEST_GUILESS_MAIN(MacOSTest)
#include "tst_macos.moc"
