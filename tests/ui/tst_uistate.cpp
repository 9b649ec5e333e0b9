#include "UIState.h"

#include <QSignalSpy>
#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class TestUIState : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Every property that QML binds to: a new value is announced, stored, and announced by that property's own signal
    /// alone.
    void everyPropertyAnnouncesItself() {
        UIState ui;
        const QMetaObject* meta = ui.metaObject();
        QVERIFY(meta->propertyCount() > meta->propertyOffset());
        for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
            const QMetaProperty property = meta->property(i);
            const QVariant old = property.read(&ui);
            const QVariant value = old.typeId() == QMetaType::Bool  ? QVariant(!old.toBool())
                                   : old.typeId() == QMetaType::Int ? QVariant(old.toInt() + 1)
                                                                    : QVariant(old.toString() + u'x');
            const QSignalSpy will(&ui, &UIState::objectWillChange);
            const QSignalSpy did(&ui, property.notifySignal());
            QVariant before;
            QObject context;
            connect(&ui, &UIState::objectWillChange, &context, [&] { before = property.read(&ui); });
            for (int time = 0; time < 2; ++time)
                QVERIFY2(property.write(&ui, value), property.name());
            QCOMPARE(property.read(&ui), value);
            QCOMPARE(before, old);
            QCOMPARE(will.count(), 1);
            QCOMPARE(did.count(), 1);
        }
    }

    void resetRestoresTheFormAlone() {
        UIState ui;
        const auto form = [&ui] {
            return QVariantList{ui.addServerTab(),  ui.newServerName(), ui.newServerHost(),  ui.newServerUser(),
                                ui.newServerPort(), ui.newServerKey(),  ui.newServerDocker()};
        };
        const QVariantList empty{0, u""_s, u""_s, u"root"_s, u"22"_s, u""_s, true};
        QCOMPARE(form(), empty);
        const QMetaObject* meta = ui.metaObject();
        for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
            meta->property(i).write(&ui, u"1"_s);
        ui.setNewServerDocker(false);
        ui.resetAddServerForm();
        QCOMPARE(form(), empty);
        QVERIFY(ui.showingAddServer());
        QCOMPARE(ui.onboardingStep(), 1);
    }
};

QTEST_APPLESS_MAIN(TestUIState)
#include "tst_uistate.moc"
