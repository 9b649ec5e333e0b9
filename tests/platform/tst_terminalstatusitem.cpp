#include "TerminalStatusItem.h"

#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

/// A connection whose reading end belongs to the test and never blocks.
struct Connection {
    int ends[2] = {-1, -1};

    explicit Connection(bool socket = false) {
        if ((socket ? socketpair(AF_UNIX, SOCK_STREAM, 0, ends) : pipe(ends)) != 0)
            qFatal("No pipe to test with");
        fcntl(ends[0], F_SETFL, O_NONBLOCK);
    }
    ~Connection() {
        closeReader();
        ::close(ends[1]);
    }
    void closeReader() {
        if (ends[0] >= 0)
            ::close(std::exchange(ends[0], -1));
    }
    QByteArray readAll() const {
        QByteArray all;
        char piece[4096];
        for (ssize_t n; (n = read(ends[0], piece, sizeof piece)) > 0;)
            all.append(piece, n);
        return all;
    }
};

StatusItemContent content(const QString& title, const QString& symbol = u"exclamationmark.triangle.fill"_s) {
    return {symbol, title, u"Tarnwick"_s};
}

} // namespace

class TestTerminalStatusItem : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void printsChangedContents() {
        const Connection pipe;
        TerminalStatusItem item(pipe.ends[1]);
        item.setContent(content(u" 41°C • ALL OFF"_s));
        QCOMPARE(pipe.readAll(), "⚠ 41°C • ALL OFF\n"); // at once, without the event loop
        item.setContent(content(u" 41°C • ALL OFF"_s));
        item.setContent(content(u" 41°C • 1 OK"_s, u"thermometer.medium"_s));
        item.setContent(content(u""_s, u"waveform.path.ecg"_s));
        item.setContent(content(u" x\x1b[31m\n\u009b\u2028\u202ey"_s, u"unheard.of"_s));
        QCOMPARE(pipe.readAll(), "🌡 41°C • 1 OK\n∿\n● x [31m   y\n");
    }

    /// The first line does not fit and is partly written. It is completed, and of the lines that came meanwhile only
    /// the last follows.
    void slowReader() {
        for (const auto& [socket, flags] : {std::pair{false, 0}, {false, O_NONBLOCK}, {true, O_NONBLOCK}}) {
            const Connection connection(socket);
            fcntl(connection.ends[1], F_SETFL, flags);
            TerminalStatusItem item(connection.ends[1]);
            const QString longTitle(100'000, u'•');
            item.setContent(content(longTitle));
            for (int i = 0; i < 100; ++i)
                item.setContent(content(QString::number(i)));

            const QByteArray expected = "⚠" + longTitle.toUtf8() + "\n⚠99\n";
            QByteArray received;
            QTRY_VERIFY((received += connection.readAll()).size() >= expected.size());
            QVERIFY(received == expected);
            item.setContent(content(u" later"_s));
            QCOMPARE(connection.readAll(), "⚠ later\n");
        }
    }

    /// Setting a label reports it once, from the event loop, also when the label is the old one.
    void closedReader() {
        for (const bool socket : {false, true}) {
            Connection connection(socket);
            TerminalStatusItem item(connection.ends[1]);
            const QSignalSpy closed(&item, &TerminalStatusItem::outputClosed);
            item.setContent(content(u" 1"_s));
            if (socket)
                QCOMPARE(shutdown(connection.ends[0], SHUT_WR), 0); // as terminal multiplexers do
            item.setContent(content(u" 1"_s));
            QCoreApplication::processEvents();
            QCOMPARE(closed.count(), 0);
            connection.closeReader();
            item.setContent(content(socket ? u" 1"_s : u" 2"_s)); // SIGPIPE would end the test here
            QCOMPARE(closed.count(), 0);
            QTRY_COMPARE(closed.count(), 1);
            item.setContent(content(u" 3"_s));
            QCoreApplication::processEvents();
            QCOMPARE(closed.count(), 1);
        }
    }

    void regularFileStaysOpen() {
        QTemporaryFile file;
        QVERIFY(file.open());
        TerminalStatusItem item(file.handle());
        const QSignalSpy closed(&item, &TerminalStatusItem::outputClosed);
        item.setContent(content(u" 1"_s));
        QCoreApplication::processEvents();
        item.setContent(content(u" 2"_s));
        file.seek(0);
        QCOMPARE(file.readAll(), "⚠ 1\n⚠ 2\n");
        QCOMPARE(closed.count(), 0);
    }
};

QTEST_GUILESS_MAIN(TestTerminalStatusItem)
#include "tst_terminalstatusitem.moc"
