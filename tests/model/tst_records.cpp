#include "Server.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

class RecordsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void serversInASetAreTheirContents() {
        Server server;
        server.metrics = ServerMetrics();
        server.metrics->containers = {ContainerInfo()};
        QSet<Server> set{server};
        QVERIFY(set.contains(Server(server)));
        server.metrics->containers[0].state = u"exited"_s;
        QVERIFY(!set.contains(server) && qHash(server) != qHash(*set.cbegin()));
        server = *set.cbegin();
        server.metrics->lastChecked = Instant{1};
        QVERIFY(!set.contains(server) && qHash(server) != qHash(*set.cbegin()));
    }

    void healthStatusFromItsWord() {
        QCOMPARE(serverHealthStatusFromRawValue(u"healthy"), ServerHealthStatus::healthy);
        QCOMPARE(serverHealthStatusFromRawValue(u"checking"), ServerHealthStatus::checking);
        QCOMPARE(serverHealthStatusFromRawValue(u"Healthy"), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(RecordsTest)
#include "tst_records.moc"
