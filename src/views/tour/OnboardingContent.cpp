#include "OnboardingContent.h"

#include "ProductLinks.h"
#include "computer/MacInfoContent.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int lastPage = 4;

constexpr MacTileWording wording{
    .cpuDecimals = 1, .gpu = &SystemWords::gpuInShort, .processor = u"CPU/GPU Die", .hotspot = u"Hotspot"};

QString nextCaption(int step) {
    if (step >= lastPage)
        return {};
    return step == 0 ? u"Explore Features"_s : u"Next"_s;
}

ServerMetrics demoMetrics() {
    ServerMetrics metrics;
    metrics.cpuPercent = 24.5;
    metrics.memoryUsedMB = 3280;
    metrics.memoryTotalMB = 8192;
    metrics.diskUsedGB = 42.5;
    metrics.diskTotalGB = 120;
    metrics.uptimeString = u"14d 6h"_s;
    metrics.loadAvg1m = 0.45;
    metrics.latencyMs = 19;
    metrics.lastChecked = Instant::now();
    metrics.containers = {
        {u"c1"_s, u"nginx-proxy"_s, u"nginx:alpine"_s, u"Up 12 days"_s, u"running"_s, u"80:80, 443:443"_s},
        {u"c2"_s, u"postgres-db"_s, u"postgres:16"_s, u"Up 14 days"_s, u"running"_s, u"5432:5432"_s},
        {u"c3"_s, u"redis-cache"_s, u"redis:7-alpine"_s, u"Up 14 days"_s, u"running"_s, u"6379:6379"_s},
    };
    return metrics;
}

} // namespace

QString liveMenuBarPreview(const MenuBarItemSet& pinned) {
    QStringList parts;
    for (const MenuBarItem item : pinned)
        parts += tourExample(item);
    return parts.isEmpty() ? SharedCaptions::product.toString() : parts.join(u" \u2022 ");
}

QList<TourStep> tourSteps(const SystemWords& words) {
    return {
        {u"Step 1 of 5 \u2022 Introduction"_s, SharedCaptions::welcome.toString(),
         u"Native %1 monitoring for your servers, Docker containers, and %2."_s.arg(words.systemBar, words.hardware)},
        {u"Step 2 of 5 \u2022 Server & Docker Fleets"_s, u"Server Fleets & Docker Containers"_s,
         u"This is exactly how server cards appear in your Tarnwick %1:"_s.arg(words.bar)},
        {u"Step 3 of 5 \u2022 Telemetry"_s, u"%1 & Thermals"_s.arg(words.hardwareTitle),
         u"Real live telemetry queried directly from your %1:"_s.arg(words.computer)},
        {u"Step 4 of 5 \u2022 %1 Customization"_s.arg(words.barTitle), u"Custom %1 Multi-Pinning"_s.arg(words.barTitle),
         u"Interactive demo: Toggle any checkbox below to see your %1 update live:"_s.arg(words.bar)},
        {u"Step 5 of 5 \u2022 You're All Set!"_s, u"You're All Set!"_s,
         u"Tarnwick is 100% free and ready to monitor your infrastructure."_s}};
}

QList<FeatureBullet> featureBullets(const SystemWords& words) {
    return {{u"network"_s, ColorRole::Role::Blue, u"Zero-Agent Architecture"_s,
             u"Connects via native SSH. No daemons, Python scripts, or dockers needed on target hosts."_s},
            {u"cpu"_s, ColorRole::Role::Orange, words.telemetryTitle.toString(), words.telemetryGuide.toString()},
            {u"pin.fill"_s, ColorRole::Role::Purple, u"Multi-Metric %1 Pinning"_s.arg(words.barTitle),
             u"Pin any combination of temperatures, server health, and resource loads directly to your %1."_s.arg(
                 words.systemBarInShort)}};
}

TourWords tourWords(const SystemWords& words) {
    return {.barSymbol = words.barSymbol.toString(),
            .barMenus = words.barMenus.toString().split(u' ', Qt::SkipEmptyParts),
            .pinsHeading = u"PIN TO %1"_s.arg(words.bar.toString().toUpper()),
            .unlockedFeatures = u"Unlimited remote SSH servers, Docker container controls, native %1, and customizable "
                                "%2 pinning are completely free."_s.arg(words.telemetry, words.bar)};
}

QList<TourLink> tourLinks() {
    return {{u"cup.and.saucer.fill"_s, SharedCaptions::donate.toString(), QUrl(ProductLinks::donationPage.toString())},
            {u"globe"_s, u"Official Website: "_s + ProductLinks::webSiteDomain.toString(),
             QUrl(ProductLinks::webSite.toString())}};
}

Server demoServer() {
    Server server;
    server.id = QUuid(u"00000000-0000-0000-0000-000000000001"_s);
    server.name = u"Production VPS (Ubuntu 24.04)"_s;
    server.host = u"10.0.0.10"_s;
    server.user = u"ubuntu"_s;
    server.metrics = demoMetrics();
    return server;
}

OnboardingContent onboardingContent(int step, const MacHardwareInfo& info, const MenuBarItemSet& pinned,
                                    const SystemWords& words) {
    const int page = step >= 0 && step < lastPage ? step : lastPage;
    return {.page = page,
            .dot = step,
            .stepSubtitle = tourSteps(words).at(page).subtitle,
            .showsBack = step > 0,
            .nextCaption = nextCaption(step),
            .machineHeading = machineHeading(info),
            .machineIdentity = machineIdentity(info),
            .loads = loadTiles(info, wording, words),
            .thermals = thermalTiles(info, wording, words),
            .menuBarPreview = liveMenuBarPreview(pinned)};
}

} // namespace tarnwick
