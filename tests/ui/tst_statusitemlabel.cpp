#include "../computer/SampleComputer.h"
#include "StatusItemLabel.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

QList<Server> fleet(const QString& pattern) { // o answered, x failed, ? not yet probed; upper case X and O: paused
    QList<Server> servers;
    for (const QChar c : pattern) {
        Server server;
        server.isEnabled = !c.isUpper();
        if (c.toLower() == u'o')
            server.metrics = ServerMetrics();
        else if (c.toLower() == u'x')
            server.metrics = ServerMetrics::offline(u"Connection refused"_s);
        servers += server;
    }
    return servers;
}

} // namespace

class TestStatusItemLabel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void composes() {
        using Pins = QList<int>;
        const Pins standard{0, 6};
        const QString warning = u"exclamationmark.triangle.fill"_s;
        const QString thermometer = u"thermometer.medium"_s;
        const std::tuple<QString, Pins, QString, QString> rows[] = {
            {u""_s, standard, thermometer, u" 41°C • 0"_s},
            {u"oo"_s, standard, thermometer, u" 41°C • 2 OK"_s},
            {u"ox"_s, standard, warning, u" 41°C • 1/2 OK"_s},
            {u"oo?"_s, standard, warning, u" 41°C • 2/3 OK"_s},
            {u"x?"_s, standard, warning, u" 41°C • ALL OFF"_s},
            {u"oXO"_s, standard, thermometer, u" 41°C • 1 OK"_s},
            {u"XX"_s, standard, thermometer, u" 41°C • 0"_s},
            // The first of what is pinned gives the symbol, in whichever order it was pinned.
            {u"o"_s,
             {6, 5, 4, 3, 2, 1, 0},
             thermometer,
             u" 41°C • Peak 58°C • SSD 36°C • CPU 12% • GPU 0% • RAM 100% • 1 OK"_s},
            {u"o"_s, {1, 2, 3, 4, 5}, u"flame.fill"_s, u" Peak 58°C • SSD 36°C • CPU 12% • GPU 0% • RAM 100%"_s},
            {u"o"_s, {5, 2}, u"internaldrive"_s, u" SSD 36°C • RAM 100%"_s},
            {u"o"_s, {6, 3}, u"cpu"_s, u" CPU 12% • 1 OK"_s},
            {u"o"_s, {4, 5}, u"square.grid.2x2"_s, u" GPU 0% • RAM 100%"_s},
            {u"o"_s, {5}, u"memorychip"_s, u" RAM 100%"_s},
            {u"o"_s, {6}, u"waveform.path.ecg"_s, u" 1 OK"_s},
            {u"o"_s, {}, u"waveform.path.ecg"_s, u""_s},
            {u"x"_s, {}, warning, u""_s},
        };
        for (const auto& [pattern, pins, symbol, title] : rows) {
            AppSettings settings;
            settings.pinnedMenuBarItems.clear();
            for (const int pin : pins)
                settings.togglePinned(static_cast<MenuBarItem>(pin));
            // Halves round to even, as printf does: 36.5 to 36, 12.5 to 12, 0.5 to 0.
            SampleComputer sample;
            sample.sensors.readings->last().celsius = 36.5;
            sample.kernel.cards = {accelerator(0.5)};
            sample.setRam(99.6);

            const StatusItemLabel label = composeStatusItemLabel(fleet(pattern), settings, sample.computer);
            QCOMPARE(label.title, title);
            QCOMPARE(label.symbolName, symbol);
            QStringList shown;
            for (const QString& figure : {u"cpu"_s, u"gpu"_s, u"ram"_s})
                if (title.contains(figure, Qt::CaseInsensitive))
                    shown += figure;
            QCOMPARE(sample.kernel.asked, shown);

            settings.showMenuBarLabel = false;
            QCOMPARE(composeStatusItemLabel(fleet(pattern), settings, sample.computer), (StatusItemLabel{symbol, {}}));
        }
    }

    void temperaturesWithoutReading() {
        AppSettings settings;
        settings.pinnedMenuBarItems = pins(PinPreset::Thermals);
        SampleComputer sample;
        sample.sensors.readings = {{{u"acpitz"_s, 40.0}}};
        QCOMPARE(composeStatusItemLabel({}, settings, sample.computer).title, u" --°C • Peak --°C • SSD --°C"_s);
    }
};

QTEST_APPLESS_MAIN(TestStatusItemLabel)
#include "tst_statusitemlabel.moc"
