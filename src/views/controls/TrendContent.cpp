#include "TrendContent.h"

#include <QDateTime>
#include <QStringList>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// "25 minutes", "1 h 40 min", "2 hours"
QString spanText(double seconds) {
    const int minutes = std::max(1, qRound(seconds / 60));
    if (minutes == 1)
        return u"minute"_s;
    if (minutes < 60)
        return u"%1 minutes"_s.arg(minutes);
    const int hours = qRound(minutes / 60.0);
    if (std::abs(minutes - hours * 60) <= 2)
        return hours == 1 ? u"hour"_s : u"%1 hours"_s.arg(hours);
    return u"%1 h %2 min"_s.arg(minutes / 60).arg(minutes % 60);
}

QString rangeText(double least, double most, const QString& unit) {
    const QString from = QString::number(qRound(least));
    const QString to = QString::number(qRound(most));
    return (from == to ? from : u"%1 to %2"_s.arg(from, to)) + unit;
}

/// The word with a capital.
QString titleOf(ServerHealthStatus status) {
    QString word = rawValue(status);
    word[0] = word[0].toUpper();
    return word;
}

qreal heightOf(ServerHealthStatus status) {
    return 0.25 * (static_cast<int>(status) + 1);
}

} // namespace

TrendContent figureTrend(const ServerTrend* trend, TrendFigure figure) {
    const QList<TrendPoint> noted = trend ? trend->points(figure) : QList<TrendPoint>();
    double least = std::numeric_limits<double>::max();
    double most = 0;
    for (const TrendPoint& point : noted) {
        least = std::min(least, point.value.value_or(least));
        most = std::max(most, point.value.value_or(most));
    }
    if (noted.size() < 2 || least > most)
        return {};
    const double span = noted.last().at.secondsSince(noted.first().at);
    const double scale = figure == TrendFigure::latency ? std::max(most, 1.0) : 100;
    constexpr qreal noHeight = std::numeric_limits<qreal>::quiet_NaN();
    TrendContent content{
        .text = u"%1 in the last %2"_s.arg(rangeText(least, most, figure == TrendFigure::latency ? u" ms"_s : u"%"_s),
                                           spanText(span))};
    for (qsizetype i = 0; i < noted.size(); ++i) {
        const TrendPoint& point = noted.at(i);
        const qreal x = point.at.secondsSince(noted.first().at) / span;
        if (i > 0 && point.at.secondsSince(noted.at(i - 1).at) > ServerTrend::longestGapSeconds)
            content.points.append({x, noHeight});
        content.points.append({x, point.value ? std::min(*point.value / scale, 1.0) : noHeight});
    }
    return content;
}

TrendContent healthTrend(const ServerTrend* trend, const QLocale& locale) {
    const QList<HealthSpell> spells = trend ? trend->spells() : QList<HealthSpell>();
    if (spells.isEmpty() || spells.first().from == spells.last().until)
        return {};
    const double span = spells.last().until.secondsSince(spells.first().from);
    TrendContent content{.isStepped = true};
    for (const HealthSpell& spell : spells) {
        const auto x = [&](Instant at) {
            return at.secondsSince(spells.first().from) / span;
        };
        content.points.append({x(spell.from), heightOf(spell.status)});
        content.points.append({x(spell.until), 0});
    }

    const QString clock = locale.timeFormat(QLocale::ShortFormat).remove(u":ss"_s); // which some locales have
    const auto time = [&](Instant at) {
        return locale.toString(at.toDateTime().toLocalTime().time(), clock);
    };
    const HealthSpell& now = spells.last();
    QStringList lines{titleOf(now.status) + (spells.size() > 1
                                                 ? u" since "_s + time(now.from)
                                                 : u" for the last "_s + spanText(now.until.secondsSince(now.from)))};
    constexpr qsizetype mostLines = 4;
    for (auto spell = spells.crbegin() + 1; spell != spells.crend() && lines.size() < mostLines; ++spell)
        if (spell->status != ServerHealthStatus::healthy)
            lines += u"%1 %2 to %3"_s.arg(titleOf(spell->status), time(spell->from), time(spell->until));
    content.text = lines.join(u'\n');
    return content;
}

} // namespace tarnwick
