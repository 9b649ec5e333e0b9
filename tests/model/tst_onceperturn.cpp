#include "OncePerTurn.h"

#include <QCoreApplication>
#include <QTest>

using namespace tarnwick;

class OncePerTurnTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void manyRequestsRunOnce() {
        int runs = 0;
        OncePerTurn task(this, [&] { ++runs; });
        for (const int turn : {1, 2}) {
            task.request();
            task.request();
            QCOMPARE(runs, turn - 1);
            QCoreApplication::processEvents();
            QCoreApplication::processEvents();
            QCOMPARE(runs, turn);
        }
    }

    void aRequestOfTheTaskItselfIsForTheNextTurn() {
        int runs = 0;
        OncePerTurn* self = nullptr;
        OncePerTurn task(this, [&] {
            if (++runs == 1)
                self->request();
        });
        self = &task;
        task.request();
        QTRY_COMPARE(runs, 2);
    }

    void nothingRunsWithoutItsContext() {
        int runs = 0;
        auto context = std::make_unique<QObject>();
        OncePerTurn task(context.get(), [&] { ++runs; });
        task.request();
        context.reset();
        QCoreApplication::processEvents();
        QCOMPARE(runs, 0);
    }
};

QTEST_GUILESS_MAIN(OncePerTurnTest)
#include "tst_onceperturn.moc"
