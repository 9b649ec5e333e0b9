#include "Rows.h"
#include "ViewRig.h"
#include "addserver/AddServerModel.h"

#include <QAbstractItemModelTester>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

QString described(const Server& server) {
    return u"%1|%2|%3|%4|%5|%6|%7"_s.arg(
        server.name, server.host, server.user, QString::number(server.port), server.isLocal ? u"local"_s : u"remote"_s,
        server.dockerEnabled ? u"docker"_s : u"plain"_s, server.customSshKeyPath.value_or(u"-"_s));
}

SSHConfigHost host(const QString& alias, const QString& hostname) {
    return {alias, hostname, u"me"_s, 2200, std::nullopt};
}

struct AddServerRig : ViewRig {
    using ViewRig::ViewRig;

    AddServerModel* showAddServer() { return show<AddServerModel>(u"addserver/AddServerSheet"_s, u"server"_s); }
};

} // namespace

class AddServerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The fields' texts, and the server that they make; only spaces and tabs are blanks.
    void readsTheForm_data() {
        addRows("forms.json", {"form", "expected"});
        const QString longName(10'000, u'x');
        QTest::newRow("long name") << longName + u"|b|root|22|"_s << longName + u"|b|root|22|remote|docker|-"_s;
    }
    void readsTheForm() {
        QFETCH(const QString, form);
        const QStringList fields = form.split(u'|');
        UIState ui;
        ui.setNewServerName(fields[0]);
        ui.setNewServerHost(fields[1]);
        ui.setNewServerUser(fields[2]);
        ui.setNewServerPort(fields[3]);
        ui.setNewServerKey(fields[4]);
        QVERIFY(canSaveForm(ui));
        const Server server = serverFromForm(ui);
        QTEST(described(server), "expected");
        QVERIFY(server.isEnabled && !server.metrics && !server.id.isNull() && server.id != serverFromForm(ui).id);
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

    void knowsWhatTheFleetHas() {
        QList<Server> fleet{StoreRig::server(u"Web"_s), StoreRig::server(u"DB"_s)};
        fleet[0].host = u"10.0.0.5"_s;
        fleet[1].host = u"db.example"_s;
        const std::tuple<QString, QString, bool> rows[] = {
            {u"x"_s, u"10.0.0.5"_s, true},      {u"Web"_s, u"y"_s, true},
            {u"web"_s, u"DB.example"_s, false},                            // letter case counts
            {u"10.0.0.5"_s, u"y"_s, false},     {u"x"_s, u"Web"_s, false}, // names are no addresses
        };
        for (const auto& [alias, hostname, expected] : rows)
            QCOMPARE(FleetIndex(fleet).contains(host(alias, hostname)), expected);
    }

    void savesAndResets() {
        AddServerRig rig;
        rig.showAddServer();
        const auto canSave = [&rig] {
            return rig.item(u"save"_s)->isEnabled();
        };
        QVERIFY(!canSave());
        rig.type(u"  "_s); // the name has the keyboard
        rig.press(Qt::Key_Tab);
        rig.type(u"h"_s);
        QVERIFY(!canSave());
        rig.press(Qt::Key_Return);
        QCOMPARE(rig.names(), QStringList());
        QCOMPARE(rig.closings(), 0);
        rig.press(Qt::Key_Tab, 1, Qt::ShiftModifier);
        rig.type(u"web"_s);
        QVERIFY(canSave());
        rig.press(Qt::Key_Tab, 2);
        rig.type(u"2222"_s); // what was there is selected
        rig.press(Qt::Key_Tab, 2);
        rig.type(u"~/k"_s);
        rig.click(u"docker"_s);
        rig.click(u"save"_s);
        QCOMPARE(described(rig.store->servers().value(0)), u"web|h|root|2222|remote|plain|~/k"_s);
        QCOMPARE(rig.closings(), 1);
        QVERIFY(rig.read(u"servers.json"_s).contains("\"web\""));
        QCOMPARE(described(serverFromForm(rig.ui)), described(serverFromForm(UIState())));
        QVERIFY(!canSave());
    }

    void closingKeepsTheFormAndCancellingResetsIt() {
        AddServerRig rig;
        rig.showAddServer();
        const QString longName(10'000, u'x');
        rig.ui.setNewServerName(longName);
        rig.press(Qt::Key_End);
        rig.type(u"yz"_s);
        rig.click(u"close"_s);
        QCOMPARE(rig.closings(), 1);
        rig.showAddServer();
        QCOMPARE(rig.text(u"name"_s), longName + u"yz"_s);
        rig.press(Qt::Key_Escape);
        QCOMPARE(rig.closings(), 1);
        QCOMPARE(rig.ui.newServerName(), longName + u"yz"_s);
        rig.showAddServer();
        rig.click(u"cancel"_s);
        QCOMPARE(rig.closings(), 1);
        QCOMPARE(rig.ui.newServerName(), QString());
        QCOMPARE(rig.text(u"name"_s), QString());
        QVERIFY(rig.store->servers().isEmpty());
    }

    void importsAndMarksAtOnce() {
        AddServerRig rig({StoreRig::server(u"old"_s)});
        rig.sshHosts = {host(u"old"_s, u"elsewhere"_s), host(u"a"_s, u"h"_s), host(u"b"_s, u"b"_s),
                        host(u"c"_s, u"h"_s)};
        rig.ui.setNewServerName(u"kept"_s);
        rig.ui.setNewServerDocker(false);
        auto* const hosts = rig.showAddServer()->hosts();
        const QAbstractItemModelTester tester(hosts);
        rig.item(u"tabs"_s)->forceActiveFocus();
        rig.press(Qt::Key_Right);
        QCOMPARE(rig.ui.addServerTab(), 1);
        QTRY_COMPARE(rig.items(u"import"_s).size(), 3);

        const QSignalSpy changes(hosts, &QAbstractItemModel::dataChanged);
        const QPoint first = middle(rig.item(u"import"_s));
        for (int time = 0; time < 2; ++time) // the second is beside the button, which is gone by then
            QTest::mouseClick(rig.view.get(), Qt::LeftButton, {}, first);
        QCOMPARE(rig.names(), (QStringList{u"old"_s, u"a"_s}));
        QCOMPARE(described(rig.store->servers()[1]), u"a|h|me|2200|remote|docker|-"_s);
        QCOMPARE(changes.count(), 2); // "c" has the same address
        QCOMPARE(rig.items(u"import"_s).size(), 1);
        QVERIFY(rig.read(u"servers.json"_s).contains("2200"));
        QCOMPARE(rig.closings(), 0);
        QCOMPARE(rig.ui.newServerName(), u"kept"_s);

        rig.item(u"hosts"_s)->forceActiveFocus();
        rig.press(Qt::Key_Return); // "old" is there already
        rig.press(Qt::Key_Down, 2);
        rig.press(Qt::Key_Space);
        QCOMPARE(rig.names(), (QStringList{u"old"_s, u"a"_s, u"b"_s}));
        rig.store->removeServer(rig.store->servers()[1].id);
        QCOMPARE(rig.items(u"import"_s).size(), 2);
    }

    void saysWhatAnImportLoses() {
        using Lost = SSHAliasMeaning::Lost;
        const SSHConfigHost db = host(u"db x"_s, u"10.0.0.5"_s);
        SSHAliasMeaning meaning{Lost::nothing, {u"db x"_s, u"db"_s, u"you"_s, 2222, std::nullopt}};
        QCOMPARE(detectedHost(db, false, meaning).description, u"me@10.0.0.5:2200"_s);
        QSet<QString> hints;
        for (const Lost lost :
             {Lost::jumpHost, Lost::proxyCommand, Lost::address, Lost::login, Lost::keys, Lost::settings}) {
            meaning.lost = lost;
            const DetectedHost row = detectedHost(db, false, meaning);
            QCOMPARE(row.addAlias, u"Add with \"db\" as the host"_s);
            QCOMPARE(row.description, u"me@10.0.0.5:2200. "_s + row.hint);
            hints += row.hint;
        }
        QCOMPARE(hints.size(), 6);
        QVERIFY(hints.contains(u"For the alias, ssh logs in as you on port 2222."_s));
        meaning.host.hostname = u"localhost"_s; // would be this computer
        QCOMPARE(detectedHost(db, false, meaning), detectedHost(db, false));
    }

    void addsByAlias() {
        AddServerRig rig({StoreRig::server(u"a"_s)});
        rig.sshHosts = {host(u"a"_s, u"10.0.0.5"_s), host(u"b"_s, u"10.0.0.6"_s), host(u"c"_s, u"c"_s),
                        host(u"d"_s, u"10.0.0.7"_s), host(u"?"_s, u"x"_s)};
        for (const QString& alias : {u"a"_s, u"b"_s, u"c"_s})
            rig.meanings[alias] = {SSHAliasMeaning::Lost::jumpHost, {alias, alias, u"you"_s, 2222, std::nullopt}};
        auto* const server = rig.showAddServer();
        const QAbstractItemModelTester tester(server->hosts());
        QCOMPARE(rig.asked, QStringList()); // nobody looks yet
        QVERIFY(rig.items(AddServerWords().includeGuide).isEmpty());
        rig.sshConfigIncludes = true;
        rig.ui.setAddServerTab(1);
        QVERIFY(rig.item(AddServerWords().includeGuide));
        QTRY_COMPARE(rig.items(u"addAlias"_s).size(), 3); // one that is in the fleet by its address, too
        QTRY_COMPARE(rig.asked.size(), 4);

        rig.click(u"addAlias"_s);
        QCOMPARE(described(rig.store->servers().value(1)), u"a|a|you|2222|remote|docker|-"_s);
        QCOMPARE(rig.items(u"addAlias"_s).size(), 2);
        rig.item(u"hosts"_s)->forceActiveFocus();
        rig.press(Qt::Key_Down);
        rig.press(Qt::Key_Tab);
        rig.press(Qt::Key_Down); // from the button to the next row
        rig.press(Qt::Key_Tab);
        rig.press(Qt::Key_Return);
        QCOMPARE(rig.names(), (QStringList{u"a"_s, u"a"_s, u"c"_s}));
        QCOMPARE(described(rig.store->servers()[2]), u"c|c|you|2222|remote|docker|-"_s);
        QCOMPARE(rig.items(u"addAlias"_s).size(), 1);
        server->importAlias(3); // which offers nothing of that kind
        server->importAlias(-1);
        QCOMPARE(rig.names().size(), 3);

        rig.meanings.clear();
        rig.ui.setAddServerTab(0);
        rig.ui.setAddServerTab(1);
        QTRY_COMPARE(rig.asked.size(), 6); // anew, but for what is reached by its alias
        QVERIFY(rig.items(u"addAlias"_s).isEmpty());
    }

    void readsTheConfigurationWithEachSheetAndChange() {
        AddServerRig rig;
        rig.ui.setAddServerTab(1);
        for (const int count : {0, 5'000, 1}) {
            rig.sshHosts.clear();
            for (int i = 0; i < count; ++i)
                rig.sshHosts += host(u"h%1"_s.arg(i), u"x"_s);
            QCOMPARE(rig.showAddServer()->importCaption(), u"Import from ~/.ssh/config (%1)"_s.arg(count));
            QVERIFY(rig.items(u"import"_s).size() < 20); // rows out of sight are not built
            QTRY_COMPARE(rig.asked.isEmpty(), count == 0);
            QVERIFY(rig.asked.size() < 40); // nor is ssh asked about them
            QCOMPARE(rig.item(u"hosts"_s) == nullptr, count == 0);
            QCOMPARE(rig.item(AddServerWords().noHosts) != nullptr, count == 0);
        }
        const std::function<void()> rebuilds[] = {
            [&] { rig.store->addServer(StoreRig::server(u"new"_s)); },
            [&] {
                QTRY_VERIFY(rig.probes.contains(u"new"_s));
                rig.probes[u"new"_s].answer(ServerMetrics());
            },
            [&] { rig.ui.setAddServerTab(0); },
            [&] { rig.ui.setAddServerTab(1); },
        };
        for (int count = 2; const auto& rebuild : rebuilds) {
            rig.sshHosts = QList<SSHConfigHost>(count, host(u"h"_s, u"x"_s));
            rebuild();
            QTRY_VERIFY(rig.item(u"Import from ~/.ssh/config (%1)"_s.arg(count)));
            ++count;
        }
    }
};

QTEST_MAIN(AddServerTest)
#include "tst_addserver.moc"
