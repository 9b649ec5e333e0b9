#include "PopoverContent.h"

#include "ProductLinks.h"
#include "SharedCaptions.h"
#include "controls/DisplayText.h"
#include "settings/SettingsContent.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// The locale's long format without its time zone: hours, minutes and seconds as people there write them.
QString timeFormat(const QLocale& locale) {
    // Quoted literals are matched first, so that a "t" in one of them is kept.
    static const QRegularExpression zone(u"('[^']*')|\\s*\\(?\\bt+\\b\\)?"_s);
    QString format = locale.timeFormat(QLocale::LongFormat);
    format.replace(zone, u"\\1"_s);
    return format.trimmed();
}

/// The symbols differ, too, for those who do not see the colours apart.
struct GroupLook {
    QStringView symbol;
    ColorRole::Role role;
};

GroupLook look(FleetGroup group) {
    using enum ColorRole::Role;
    switch (group) {
    case FleetGroup::offline:
        return {u"slash.circle.fill", Red};
    case FleetGroup::warning:
        return {u"exclamationmark.triangle.fill", Orange};
    case FleetGroup::well:
        return {u"checkmark.circle.fill", Green};
    case FleetGroup::paused:
        return {u"pause.circle", Gray};
    }
    Q_UNREACHABLE();
}

} // namespace

FleetCount fleetCountContent(FleetGroup group, int count, bool isChosen) {
    const auto [symbol, role] = look(group);
    return {.symbol = symbol.toString(),
            .text = QString::number(count) + u' ' + word(group),
            .role = count > 0 ? role : ColorRole::Role::Secondary,
            .isChosen = isChosen,
            .isEnabled = isChosen || count > 0};
}

QString nothingFoundText(const FleetFilter& filter) {
    QStringList sought;
    if (filter.group())
        sought += word(*filter.group());
    if (const QString text = displayText(filter.text()); !text.isEmpty())
        sought += text;
    return u"No server matches \u201c"_s + sought.join(u' ') + u'\u201d';
}

QString updatedText(const std::optional<Instant>& lastRefreshedAll, const QLocale& locale) {
    if (!lastRefreshedAll)
        return {};
    return u"Updated "_s + locale.toString(lastRefreshedAll->toDateTime().toLocalTime().time(), timeFormat(locale));
}

QString slowText(std::chrono::nanoseconds cycleTime, std::chrono::seconds interval, bool sharesConnections) {
    if (cycleTime <= interval)
        return {};
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(cycleTime).count();
    const bool canWaitLonger = static_cast<double>(seconds) <= refreshIntervalRange.to;
    const auto* const help = canWaitLonger
                                 ? (sharesConnections ? "A longer interval" : "A longer interval or shared connections")
                             : sharesConnections ? "Pausing servers"
                                                 : "Shared connections";
    return u"A refresh takes %1 seconds. %2 would help."_s.arg(QString::number(seconds), QLatin1StringView(help));
}

QList<FooterLink> footerLinks() {
    QList<FooterLink> links{
        {.symbol = u"globe"_s,
         .caption = u"Web"_s,
         .help = u"Visit "_s + ProductLinks::webSiteDomain.toString(),
         .address = QUrl(ProductLinks::webSite.toString(), QUrl::StrictMode)},
        {.symbol = u"cup.and.saucer.fill"_s,
         .caption = u"Ko-fi"_s,
         .help = SharedCaptions::donate.toString(),
         .address = QUrl(ProductLinks::donationPage.toString(), QUrl::StrictMode),
         .isEmphasized = true},
    };
    links.removeIf([](const FooterLink& link) { return !link.address.isValid(); });
    return links;
}

} // namespace tarnwick
