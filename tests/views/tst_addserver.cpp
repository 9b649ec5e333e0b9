#include "SheetRig.h"
#include "addserver/AddServerModel.h"

#include <QAbstractItemModelTester>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

QString described(const Server& server) {
    return QStringList{server.name,
                       server.host,
                       server.user,
                       QString::number(server.port),
                       server.isLocal ? u"local"_s : u"remote"_s,
                       server.dockerEnabled ? u"docker"_s : u"plain"_s,
                       server.customSshKeyPath.value_or(u"-"_s)}
        .join(u'|');
}

SSHConfigHost host(const QString& alias, const QString& hostname) {
    return {alias, hostname, u"me"_s, 2200, std::nullopt};
}

struct AddServerRig : SheetRig {
    QList<SSHConfigHost> hosts;
    const ViewCollaborators collaborators{.computer = sample.computer, .sshHosts = [this] {
                                              return hosts;
                                          }};
    AddServerModel* model = nullptr; ///< of the sheet that is shown

    void showAddServer() {
        auto made = std::make_unique<AddServerModel>(*store, ui, collaborators);
        model = made.get();
        showSheet(u"addserver/AddServerSheet"_s, u"server"_s, std::move(made));
    }
};

} // namespace

class AddServerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsTheForm_data() {
        QTest::addColumn<QStringList>("form");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const QStringList& form, const QString& expected) {
            QTest::newRow(name) << form << expected;
        };
        row("defaults", {u"a"_s, u"b"_s, u"root"_s, u"22"_s, u""_s}, u"a|b|root|22|remote|docker|-"_s);
        row("all trimmed", {u" \ta b\t"_s, u"\tb "_s, u" me "_s, u" 2222\t"_s, u" ~/k y "_s},
            u"a b|b|me|2222|remote|docker|~/k y"_s);
        row("blank", {u"a"_s, u"b"_s, u" \t"_s, u" "_s, u"\t "_s}, u"a|b|root|22|remote|docker|-"_s);
        row("only spaces and tabs are blanks", {u"\u00a0"_s, u"\u2003b"_s, u"\u00a0"_s, u"2222\u00a0"_s, u"\u00a0"_s},
            u"\u00a0|\u2003b|\u00a0|22|remote|docker|\u00a0"_s);
        const QString longName(10'000, u'x');
        row("long", {longName, u"b"_s, u"root"_s, u"22"_s, u""_s}, longName + u"|b|root|22|remote|docker|-"_s);
        const QList<std::pair<QString, QString>> ports{
            {u"abc"_s, u"22"_s},    {u"+2222"_s, u"2222"_s},
            {u"-1"_s, u"-1"_s},     {u"-"_s, u"22"_s},
            {u"0"_s, u"0"_s},       {u"２２２２"_s, u"22"_s},
            {u"22.5"_s, u"22"_s},   {u"1,000"_s, u"22"_s},
            {u"0x50"_s, u"22"_s},   {u"--5"_s, u"22"_s},
            {u"8 080"_s, u"22"_s},  {u"99999999999999999999"_s, u"22"_s},
            {u"007"_s, u"7"_s},     {u"9223372036854775807"_s, u"9223372036854775807"_s},
            {u"+ 2222"_s, u"22"_s}, {u"-9223372036854775809"_s, u"22"_s},
        };
        for (const auto& [typed, port] : ports)
            row(qPrintable(u"port "_s + typed), {u"a"_s, u"b"_s, u"me"_s, typed, u""_s},
                u"a|b|me|%1|remote|docker|-"_s.arg(port));
        const QList<std::pair<QString, bool>> hosts{
            {u"localhost"_s, true}, {u"127.0.0.1"_s, true},   {u" localhost\t"_s, true}, {u"LOCALHOST"_s, false},
            {u"::1"_s, false},      {u"localhost."_s, false}, {u"-oProxy=x"_s, false},   {u"two hosts"_s, false}};
        for (const auto& [typed, isLocal] : hosts)
            row(qPrintable(u"host "_s + typed), {u"a"_s, typed, u"me"_s, u"22"_s, u""_s},
                u"a|%1|me|22|%2|docker|-"_s.arg(typed.trimmed(), isLocal ? u"local"_s : u"remote"_s));
    }
    void readsTheForm() {
        QFETCH(QStringList, form);
        UIState ui;
        ui.setNewServerName(form[0]);
        ui.setNewServerHost(form[1]);
        ui.setNewServerUser(form[2]);
        ui.setNewServerPort(form[3]);
        ui.setNewServerKey(form[4]);
        QVERIFY(canSaveForm(ui));
        const Server server = serverFromForm(ui);
        QTEST(described(server), "expected");
        QVERIFY(server.isEnabled && !server.metrics && !server.id.isNull());
        QVERIFY(server.id != serverFromForm(ui).id);
    }

    void readsAHost() {
        const SSHConfigHost db{u"db"_s, u"127.0.0.1"_s, u"admin"_s, -1, u"/home/me/.ssh/key"_s};
        QCOMPARE(described(serverFromHost(db)), u"db|127.0.0.1|admin|-1|local|docker|/home/me/.ssh/key"_s);
        const SSHConfigHost hostile{u"<b>x</b>\u202e\ny"_s, u"h"_s, u"u"_s, 22, std::nullopt};
        QCOMPARE(serverFromHost(hostile).name, hostile.alias);
        const DetectedHost shown = detectedHost(hostile, false);
        QCOMPARE(shown.alias, u"<b>x</b> y"_s);
        QCOMPARE(shown.address, u"u@h:22"_s);
        QVERIFY(shown.keyText.isEmpty());
        QCOMPARE(detectedHost(db, true).keyText, u"Key: /home/me/.ssh/key"_s);
    }

    void knowsWhatTheFleetHas_data() {
        QTest::addColumn<QString>("alias");
        QTest::addColumn<QString>("hostname");
        QTest::addColumn<bool>("expected");
        QTest::newRow("address") << u"x"_s << u"10.0.0.5"_s << true;
        QTest::newRow("name, another address") << u"Web"_s << u"y"_s << true;
        QTest::newRow("other letter case") << u"web"_s << u"DB.example"_s << false;
        QTest::newRow("alias like an address") << u"10.0.0.5"_s << u"y"_s << false;
        QTest::newRow("address like a name") << u"x"_s << u"Web"_s << false;
    }
    void knowsWhatTheFleetHas() {
        QFETCH(QString, alias);
        QFETCH(QString, hostname);
        Server web = StoreRig::server(u"Web"_s);
        web.host = u"10.0.0.5"_s;
        Server db = StoreRig::server(u"DB"_s);
        db.host = u"db.example"_s;
        QTEST(FleetIndex({web, db}).contains({alias, hostname, u"root"_s, 22, std::nullopt}), "expected");
    }

    void savesAndResets() {
        AddServerRig rig;
        rig.showAddServer();
        QVERIFY(!rig.item(u"save"_s)->isEnabled());
        rig.type(u"  "_s); // the name has the keyboard
        rig.press(Qt::Key_Tab);
        rig.type(u"h"_s);
        QVERIFY(!rig.item(u"save"_s)->isEnabled());
        rig.press(Qt::Key_Return);
        QCOMPARE(rig.names(), QStringList());
        QVERIFY(!rig.isDismissed());
        rig.press(Qt::Key_Tab, Qt::ShiftModifier);
        rig.type(u"web"_s);
        QVERIFY(rig.item(u"save"_s)->isEnabled());
        rig.press(Qt::Key_Tab);
        rig.press(Qt::Key_Tab);
        rig.type(u"2222"_s); // what was there is selected
        rig.press(Qt::Key_Tab);
        rig.press(Qt::Key_Tab);
        rig.type(u"~/k"_s);
        rig.click(u"docker"_s);
        QCOMPARE(rig.ui.newServerKey(), u"~/k"_s);
        rig.click(u"save"_s);
        QCOMPARE(described(rig.store->servers().value(0)), u"web|h|root|2222|remote|plain|~/k"_s);
        QVERIFY(rig.isDismissed());
        QVERIFY(rig.read(u"servers.json"_s).contains("\"web\""));
        const UIState initial;
        QCOMPARE(described(serverFromForm(rig.ui)), described(serverFromForm(initial)));
        QVERIFY(!rig.item(u"save"_s)->isEnabled());
    }

    void closingKeepsTheFormAndCancellingResetsIt() {
        AddServerRig rig;
        rig.showAddServer();
        const QString longName(10'000, u'x');
        rig.ui.setNewServerName(longName);
        rig.press(Qt::Key_End);
        rig.type(u"yz"_s);
        QCOMPARE(rig.ui.newServerName().size(), 10'002);
        rig.click(u"close"_s);
        QVERIFY(rig.isDismissed());
        rig.showAddServer();
        QCOMPARE(rig.item(u"name"_s)->property("text").toString(), rig.ui.newServerName());
        rig.press(Qt::Key_Escape);
        QVERIFY(rig.isDismissed());
        QCOMPARE(rig.ui.newServerName(), longName + u"yz"_s);
        rig.showAddServer();
        rig.click(u"cancel"_s);
        QVERIFY(rig.isDismissed());
        QCOMPARE(rig.ui.newServerName(), QString());
        QCOMPARE(rig.item(u"name"_s)->property("text").toString(), QString());
        QVERIFY(rig.store->servers().isEmpty());
    }

    void importsAndMarksAtOnce() {
        AddServerRig rig;
        rig.startWith({StoreRig::server(u"old"_s)});
        rig.hosts = {host(u"old"_s, u"elsewhere"_s), host(u"a"_s, u"h"_s), host(u"b"_s, u"b"_s), host(u"c"_s, u"h"_s)};
        rig.ui.setNewServerName(u"kept"_s);
        rig.ui.setNewServerDocker(false);
        rig.showAddServer();
        const QAbstractItemModelTester tester(rig.model->hosts());
        rig.item(u"tabs"_s)->forceActiveFocus();
        rig.press(Qt::Key_Right);
        QCOMPARE(rig.ui.addServerTab(), 1);
        QTRY_COMPARE(rig.items(u"import"_s).size(), 3);

        const QSignalSpy changes(rig.model->hosts(), &QAbstractItemModel::dataChanged);
        QQuickItem* const first = rig.item(u"import"_s);
        rig.click(first);
        rig.click(first); // gone by now
        QCOMPARE(rig.names(), (QStringList{u"old"_s, u"a"_s}));
        QCOMPARE(described(rig.store->servers()[1]), u"a|h|me|2200|remote|docker|-"_s);
        QCOMPARE(changes.count(), 2); // "c" has the same address
        QCOMPARE(rig.items(u"import"_s).size(), 1);
        QVERIFY(rig.read(u"servers.json"_s).contains("2200"));
        QVERIFY(!rig.isDismissed());
        QCOMPARE(rig.ui.newServerName(), u"kept"_s);

        rig.item(u"hosts"_s)->forceActiveFocus();
        rig.press(Qt::Key_Return); // "old" is there already
        rig.press(Qt::Key_Down);
        rig.press(Qt::Key_Down);
        rig.press(Qt::Key_Space);
        QCOMPARE(rig.names(), (QStringList{u"old"_s, u"a"_s, u"b"_s}));
        rig.store->removeServer(rig.store->servers()[1].id);
        QCOMPARE(rig.items(u"import"_s).size(), 2);
    }

    void readsTheConfigurationWithEachSheet() {
        AddServerRig rig;
        rig.ui.setAddServerTab(1);
        for (const int count : {0, 5'000, 1}) {
            rig.hosts = QList<SSHConfigHost>(count, host(u"h"_s, u"x"_s));
            rig.showAddServer();
            QCOMPARE(rig.model->importCaption(), u"Import from ~/.ssh/config (%1)"_s.arg(count));
            QVERIFY(rig.items(u"import"_s).size() < 20); // rows out of sight are not built
            QCOMPARE(rig.item(u"hosts"_s) == nullptr, count == 0);
        }
    }
};

QTEST_MAIN(AddServerTest)
#include "tst_addserver.moc"
