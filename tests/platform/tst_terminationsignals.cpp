#include "ProcessRunner.h"
#include "TerminationSignals.h"

#include <QSignalSpy>
#include <QTest>

#include <cstring>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tarnwick;

class TerminationSignalsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void eachSignal() {
        for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
            const TerminationSignals signalsToQt;
            QSignalSpy spy(&signalsToQt, &TerminationSignals::terminationRequested);
            std::thread([number] { ::raise(number); }).join();
            QCOMPARE(spy.size(), 0); // never inside the handler
            QVERIFY2(spy.wait(), strsignal(number));
            QCOMPARE(::raise(SIGPIPE), 0);
            QCOMPARE(spy.size(), 1);
        }
    }

    /// More signals than the pipe holds do not block the program, and are reported as few.
    static void flood() {
        const TerminationSignals signalsToQt;
        QSignalSpy spy(&signalsToQt, &TerminationSignals::terminationRequested);
        for (int i = 0; i < 70'000; ++i)
            ::raise(SIGTERM);
        QVERIFY(spy.wait());
        QCoreApplication::processEvents();
        QCOMPARE(spy.size(), 1);
    }

    static void dispositions() {
        const auto handlerOf = [](int number) {
            struct sigaction action {};
            ::sigaction(number, nullptr, &action);
            return action.sa_handler;
        };
        const auto before = handlerOf(SIGTERM);
        ::signal(SIGHUP, SIG_IGN);
        {
            const TerminationSignals signalsToQt;
            QVERIFY(handlerOf(SIGTERM) != before && handlerOf(SIGHUP) == SIG_IGN);
        }
        QVERIFY(handlerOf(SIGTERM) == before);
        ::signal(SIGHUP, SIG_DFL);
    }

    /// The last test: once a child has run, ThreadSanitizer does not deliver our signals.
    static void stillEndWhatAChildExecutes() {
        const TerminationSignals signalsToQt;
        for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
            const ProcessOutcome outcome =
                ProcessRunner::run({.executable = u"/bin/sh"_s, .arguments = {u"-c"_s, u"kill -%1 $$"_s.arg(number)}})
                    .result();
            QCOMPARE(outcome.end, ProcessOutcome::End::signalled);
            QCOMPARE(outcome.status, number);
        }
    }
};

QTEST_GUILESS_MAIN(TerminationSignalsTest)
#include "tst_terminationsignals.moc"
