#include "ServerTrend.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

ServerMetrics result(double seconds, double cpu, double disk = 10) {
    ServerMetrics metrics;
    metrics.cpuPercent = cpu;
    metrics.diskUsedGB = disk;
    metrics.diskTotalGB = 100;
    metrics.latencyMs = 70'000;
    metrics.lastChecked = {seconds};
    if (cpu < 0)
        metrics = ServerMetrics::offline(u"gone"_s);
    metrics.lastChecked = {seconds};
    return metrics;
}

/// "SECONDS VALUE" of each point, "-" for a value that is absent.
QString text(const QList<TrendPoint>& points) {
    QStringList texts;
    for (const TrendPoint& point : points)
        texts += QString::number(point.at.secondsSinceReferenceDate) + u' ' +
                 (point.value ? QString::number(*point.value) : u"-"_s);
    return texts.join(u", "_s);
}

QString text(const QList<HealthSpell>& spells) {
    QStringList texts;
    for (const HealthSpell& spell : spells)
        texts += u"%1 %2-%3"_s.arg(rawValue(spell.status))
                     .arg(spell.from.secondsSinceReferenceDate)
                     .arg(spell.until.secondsSinceReferenceDate);
    return texts.join(u", "_s);
}

} // namespace

class ServerTrendTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void twoHoursInHalfMinutes() {
        ServerTrend trend;
        QCOMPARE(trend.points(TrendFigure::cpu).size(), 0);
        trend.note(result(0, 200));
        trend.note(result(29, 12.4)); // the latest of a slot counts
        trend.note(result(95, -1));
        QCOMPARE(text(trend.points(TrendFigure::cpu)), u"0 12.5, 90 -"_s);
        QCOMPARE(text(trend.points(TrendFigure::disk)), u"0 10, 90 -"_s);
        QCOMPARE(text(trend.points(TrendFigure::latency)), u"0 65535, 90 -"_s);
        trend.note(result(7200, 300)); // the first slot is used again
        QCOMPARE(text(trend.points(TrendFigure::cpu)), u"90 -, 7200 127.5"_s);
        trend.note(result(7229 + 7200, 1));
        QCOMPARE(text(trend.points(TrendFigure::cpu)), u"14400 1"_s);
        trend.note(result(14'000, 2)); // the clock was set back
        QCOMPARE(text(trend.points(TrendFigure::cpu)), u"13980 2"_s);
    }

    void spells() {
        ServerTrend trend;
        for (const auto& [seconds, cpu, disk] :
             {std::tuple(0, 1, 10), {60, 1, 10}, {120, -1, 0}, {180, 1, 10}, {540, 1, 99}, {930, 1, 99}, {960, 1, 10}})
            trend.note(result(seconds, cpu, disk));
        QCOMPARE(text(trend.spells()), u"healthy 0-120, offline 120-180, healthy 180-540, critical 540-540, "
                                       u"critical 930-960, healthy 960-960"_s);
    }
};

QTEST_APPLESS_MAIN(ServerTrendTest)
#include "tst_servertrend.moc"
