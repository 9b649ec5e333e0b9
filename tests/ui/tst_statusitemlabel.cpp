#include "../computer/SampleComputer.h"
#include "StatusItemLabel.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

enum class Answer { ok, failed, none };

Server server(Answer answer, bool enabled = true) {
    Server server;
    server.isEnabled = enabled;
    if (answer == Answer::ok)
        server.metrics = ServerMetrics();
    else if (answer == Answer::failed)
        server.metrics = ServerMetrics::offline(u"Connection refused"_s);
    return server;
}

QList<Server> fleet(const QString& pattern) { // o answered, x failed, ? not yet probed; upper case X and O: paused
    QList<Server> servers;
    for (const QChar c : pattern) {
        const Answer answer = c.toLower() == u'o' ? Answer::ok : c.toLower() == u'x' ? Answer::failed : Answer::none;
        servers += server(answer, !c.isUpper());
    }
    return servers;
}

} // namespace

class TestStatusItemLabel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void composes_data() {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QList<int>>("pins");
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("title");

        const QList<int> standard{0, 6};
        const QString warning = u"exclamationmark.triangle.fill"_s;
        const QString thermometer = u"thermometer.medium"_s;
        QTest::newRow("no servers") << u""_s << standard << thermometer << u" 41°C • 0"_s;
        QTest::newRow("all answer") << u"oo"_s << standard << thermometer << u" 41°C • 2 OK"_s;
        QTest::newRow("one fails") << u"ox"_s << standard << warning << u" 41°C • 1/2 OK"_s;
        QTest::newRow("one not yet probed") << u"oo?"_s << standard << warning << u" 41°C • 2/3 OK"_s;
        QTest::newRow("none answers") << u"x?"_s << standard << warning << u" 41°C • ALL OFF"_s;
        QTest::newRow("paused ones do not count") << u"oXO"_s << standard << thermometer << u" 41°C • 1 OK"_s;
        QTest::newRow("all paused") << u"XX"_s << standard << thermometer << u" 41°C • 0"_s;

        QTest::newRow("all, pinned backwards")
            << u"o"_s << QList<int>{6, 5, 4, 3, 2, 1, 0} << thermometer
            << u" 41°C • Peak 58°C • SSD 36°C • CPU 12% • GPU 0% • RAM 100% • 1 OK"_s;
        QTest::newRow("peak") << u"o"_s << QList<int>{1, 2, 3, 4, 5} << u"flame.fill"_s
                              << u" Peak 58°C • SSD 36°C • CPU 12% • GPU 0% • RAM 100%"_s;
        QTest::newRow("ssd") << u"o"_s << QList<int>{5, 2} << u"internaldrive"_s << u" SSD 36°C • RAM 100%"_s;
        QTest::newRow("cpu") << u"o"_s << QList<int>{6, 3} << u"cpu"_s << u" CPU 12% • 1 OK"_s;
        QTest::newRow("gpu") << u"o"_s << QList<int>{4, 5} << u"square.grid.2x2"_s << u" GPU 0% • RAM 100%"_s;
        QTest::newRow("ram") << u"o"_s << QList<int>{5} << u"memorychip"_s << u" RAM 100%"_s;
        QTest::newRow("fleet") << u"o"_s << QList<int>{6} << u"waveform.path.ecg"_s << u" 1 OK"_s;
        QTest::newRow("nothing pinned") << u"o"_s << QList<int>{} << u"waveform.path.ecg"_s << u""_s;
        QTest::newRow("nothing pinned, one fails") << u"x"_s << QList<int>{} << warning << u""_s;
    }
    void composes() {
        QFETCH(const QString, pattern);
        QFETCH(const QList<int>, pins);
        QFETCH(const QString, symbol);
        QFETCH(const QString, title);

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
        QCOMPARE(label.symbolName, symbol);
        QCOMPARE(label.title, title);
        QStringList pinned;
        for (const auto& [item, figure] : {std::pair(MenuBarItem::cpuUsage, u"cpu"_s),
                                           {MenuBarItem::gpuUsage, u"gpu"_s},
                                           {MenuBarItem::ramUsage, u"ram"_s}})
            if (settings.isPinned(item))
                pinned += figure;
        QCOMPARE(sample.kernel.asked, pinned);

        settings.showMenuBarLabel = false;
        QCOMPARE(composeStatusItemLabel(fleet(pattern), settings, sample.computer), (StatusItemLabel{symbol, {}}));
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
