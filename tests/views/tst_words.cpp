#include "AlertRules.h"
#include "Fixture.h"
#include "NotificationService.h"
#include "StatusItemLabel.h"
#include "ViewRig.h"
#include "linux/LinuxWords.h"

#include <QAccessible>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// Collects what the items say, show and are to a screen reader.
void collect(const QQuickItem* item, QSet<QString>& texts) {
    for (const char* property : {"text", "help", "prompt", "name"})
        texts += item->property(property).toString();
    if (auto* const spoken = QAccessible::queryAccessibleInterface(const_cast<QQuickItem*>(item)))
        texts += {spoken->text(QAccessible::Name), spoken->text(QAccessible::Description)};
    for (const QQuickItem* child : item->childItems())
        collect(child, texts);
}

/// Every view, one after another, on a computer of a system with these words.
struct AllViews : ViewRig {
    QSet<QString> texts;

    explicit AllViews(const SystemWords& words) : ViewRig({}, words) {
        QList<Server> servers = StoreRig::fleet(u"lr");
        servers[0].isLocal = true;
        servers[0].metrics = servers[1].metrics = ServerMetrics();
        store->setServers(servers);
        store->editSettings([](AppSettings& settings) { settings.pinnedMenuBarItems = pins(PinPreset::All); });
        sshHosts = {{u"new"_s, u"192.0.2.9"_s, u"me"_s, 22, {}}};
    }
    void look() {
        QSignalSpy frames(view.get(), &QQuickWindow::frameSwapped);
        view->requestUpdate();
        QTRY_VERIFY(frames.count() > 0); // lists have their rows by then
        for (const QQuickItem* root : roots())
            collect(root, texts);
    }
    void walk() {
        showPopover();
        look();
        click(u"l"_s, 0, Qt::RightButton);
        look();
        click(cardWords(sample.computer.words()).pinMenu);
        QTRY_COMPARE(roots().size(), 3);
        look();
        press(Qt::Key_Escape);

        ui.setShowingAddServer(true);
        look();
        ui.setAddServerTab(1);
        look();
        ui.setShowingMacInfoSheet(true);
        ui.setShowingAllSensors(true);
        look();
        store->editSettings([](AppSettings& settings) { settings.pinnedMenuBarItems = pins(PinPreset::Standard); });
        look();
        ui.setShowingSettings(true);
        look();
        ui.setShowingOnboarding(true);
        for (int step = 0; step < 5; ++step) {
            ui.setOnboardingStep(step);
            look();
        }
        lookElsewhere();
    }
    void lookElsewhere() {
        ServerMetrics full;
        full.diskUsedGB = full.diskTotalGB = full.memoryUsedMB = full.memoryTotalMB = 1;
        for (const ServerMetrics& metrics : {full, ServerMetrics::offline(u"refused"_s)})
            for (const Alert& alert : alertsFor(StoreRig::server(u"r"_s), metrics, {})) {
                const auto posted = NotificationService::notification(alert.title, alert.message, true);
                texts += {posted.title, posted.subtitle, posted.body};
            }
        texts += composeStatusItemLabel(store->servers(), store->settings(), sample.computer).title;
    }
};

/// With a processor of one kind of core.
void becomePc(SampleComputer& sample) {
    sample.kernel.makersName = u"ROG STRIX B550-F"_s;
    sample.kernel.values["hw.model"] = "ROG STRIX B550-F";
    sample.kernel.values["machdep.cpu.brand_string"] = "AMD Ryzen 7 5800X";
    sample.kernel.values["hw.perflevel0.physicalcpu"] = bytesOf(qint32{8});
    sample.kernel.values["hw.perflevel1.physicalcpu"] = bytesOf(qint32{0});
    sample.kernel.os = {.name = u"Debian"_s, .version = u"12"_s, .versionText = u"Debian GNU/Linux 12"_s};
    sample.sensors.readings = {{{u"tdie k10temp Tctl"_s, 57.8}, {u"tdev VRM"_s, 24.7}, {u"SSD nvme"_s, 32.0}}};
}

} // namespace

class WordsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QAccessible::setActive(true); }
    void cleanupTestCase() { QAccessible::setActive(false); }

    /// Each line of the fixture: a text on macOS, and what takes its place on Linux; nothing when it has no place
    /// there.
    void everyViewSpeaksOfItsOwnSystem() {
        AllViews mac(macWords);
        mac.walk();
        AllViews pc(linuxWords);
        becomePc(pc.sample);
        pc.walk();
        QStringList wrong;
        for (const QString& line : fixtureLines(u"views/words.txt"_s)) {
            const QString onMac = line.section(u'|', 0, 0);
            const QString onPc = line.section(u'|', 1);
            if (!mac.texts.contains(onMac) || pc.texts.contains(onMac) || (!onPc.isEmpty() && !pc.texts.contains(onPc)))
                wrong += line;
        }
        QCOMPARE(wrong.join(u" // "_s), QString());
        const QRegularExpression foreign(u"\\b(mac|macos|apple|metal|nand|iohid|unified|menu bar|soc)\\b"_s,
                                         QRegularExpression::CaseInsensitiveOption);
        for (const QString& text : std::as_const(pc.texts))
            if (foreign.match(text).hasMatch())
                wrong += text;
        QCOMPARE(wrong.join(u" // "_s), QString());
    }

    void sevenPinsFitIntoTheMockPanel() {
        AllViews pc(linuxWords);
        pc.showPopover();
        pc.ui.setOnboardingStep(3);
        pc.ui.setShowingOnboarding(true);
        QTRY_VERIFY(pc.item(u"preview"_s));
        QCOMPARE(pc.text(u"preview"_s), liveMenuBarPreview(pins(PinPreset::All)));
        QVERIFY(!pc.item(u"preview"_s)->property("truncated").toBool());
    }
};

QTEST_MAIN(WordsTest)
#include "tst_words.moc"
