#include "OnboardingContent.h"

#include "ProductLinks.h"
#include "computer/MacInfoContent.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int lastPage = 4;

constexpr MacTileWording wording{.cpuDecimals = 1, .gpu = u"Metal", .processor = u"CPU/GPU Die", .hotspot = u"Hotspot"};

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
    return parts.isEmpty() ? u"Tarnwick"_s : parts.join(u" \u2022 ");
}

QList<TourStep> tourSteps() {
    return {{u"Step 1 of 5 \u2022 Introduction"_s, u"Welcome to Tarnwick"_s,
             u"Native macOS menu bar monitoring for your servers, Docker containers, and Apple Silicon hardware."_s},
            {u"Step 2 of 5 \u2022 Server & Docker Fleets"_s, u"Server Fleets & Docker Containers"_s,
             u"This is exactly how server cards appear in your Tarnwick menu bar:"_s},
            {u"Step 3 of 5 \u2022 Telemetry"_s, u"Apple Silicon Hardware & Thermals"_s,
             u"Real live telemetry queried directly from your Mac:"_s},
            {u"Step 4 of 5 \u2022 Menu Bar Customization"_s, u"Custom Menu Bar Multi-Pinning"_s,
             u"Interactive demo: Toggle any checkbox below to see your menu bar update live:"_s},
            {u"Step 5 of 5 \u2022 You're All Set!"_s, u"You're All Set!"_s,
             u"Tarnwick is 100% free and ready to monitor your infrastructure."_s}};
}

QList<FeatureBullet> featureBullets() {
    return {{u"network"_s, ColorRole::Role::Blue, u"Zero-Agent Architecture"_s,
             u"Connects via native SSH. No daemons, Python scripts, or dockers needed on target hosts."_s},
            {u"cpu"_s, ColorRole::Role::Orange, u"Apple Silicon Telemetry"_s,
             u"37+ IOHID thermal sensors, CPU, GPU utilization, and unified RAM metrics."_s},
            {u"pin.fill"_s, ColorRole::Role::Purple, u"Multi-Metric Menu Bar Pinning"_s,
             u"Pin any combination of temperatures, server health, and resource loads directly to your macOS bar."_s}};
}

TourWords tourWords() {
    return {.barSymbol = u"apple.logo"_s,
            .barMenus = {u"Tarnwick"_s, u"File"_s, u"Edit"_s},
            .pinsHeading = u"PIN TO MENU BAR"_s,
            .unlockedFeatures = u"Unlimited remote SSH servers, Docker container controls, native Apple Silicon "
                                "telemetry, and customizable menu bar pinning are completely free."_s};
}

QList<TourLink> tourLinks() {
    return {{u"cup.and.saucer.fill"_s, u"Support Tarnwick on Ko-fi"_s, QUrl(ProductLinks::donationPage.toString())},
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

OnboardingContent onboardingContent(int step, const MacHardwareInfo& info, const MenuBarItemSet& pinned) {
    const int page = step >= 0 && step < lastPage ? step : lastPage;
    return {.page = page,
            .dot = step,
            .stepSubtitle = tourSteps().at(page).subtitle,
            .showsBack = step > 0,
            .nextCaption = nextCaption(step),
            .machineHeading = machineHeading(info),
            .machineIdentity = machineIdentity(info),
            .loads = loadTiles(info, wording),
            .thermals = thermalTiles(info, wording),
            .menuBarPreview = liveMenuBarPreview(pinned)};
}

} // namespace tarnwick
