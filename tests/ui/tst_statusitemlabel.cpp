#include "../computer/SampleComputer.h"
#include "Fixture.h"
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
        // Each line: the servers, the pinned items in the order of pinning, the symbol, and the title.
        for (const QString& line : fixtureLines(u"ui/status-item-labels.txt"_s)) {
            const QString title = line.section(u'|', 3);
            const QString symbol = line.section(u'|', 2, 2);
            const QList<Server> servers = fleet(line.section(u'|', 0, 0));
            AppSettings settings;
            settings.pinnedMenuBarItems.clear();
            for (const QChar pin : line.section(u'|', 1, 1))
                settings.togglePinned(static_cast<MenuBarItem>(pin.digitValue()));
            // Halves round to even, as printf does: 36.5 to 36, 12.5 to 12, 0.5 to 0.
            SampleComputer sample;
            sample.sensors.readings->last().celsius = 36.5;
            sample.kernel.cards = {accelerator(0.5)};
            sample.setRam(99.6);

            const StatusItemLabel label = composeStatusItemLabel(servers, settings, sample.computer);
            QCOMPARE(label.title, title);
            QCOMPARE(label.symbolName, symbol);
            QStringList shown;
            for (const QString& figure : {u"cpu"_s, u"gpu"_s, u"ram"_s})
                if (title.contains(figure, Qt::CaseInsensitive))
                    shown += figure;
            QCOMPARE(sample.kernel.asked, shown);

            settings.showMenuBarLabel = false;
            QCOMPARE(composeStatusItemLabel(servers, settings, sample.computer), (StatusItemLabel{symbol, {}}));
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
