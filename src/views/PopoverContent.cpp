#include "PopoverContent.h"

#include "ProductLinks.h"
#include "SharedCaptions.h"

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

} // namespace

QString updatedText(const std::optional<Instant>& lastRefreshedAll, const QLocale& locale) {
    if (!lastRefreshedAll)
        return {};
    return u"Updated "_s + locale.toString(lastRefreshedAll->toDateTime().toLocalTime().time(), timeFormat(locale));
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
