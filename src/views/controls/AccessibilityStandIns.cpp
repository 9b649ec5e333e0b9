#include "AccessibilityStandIns.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QSet>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

class StandIn : public QAccessibleObject {
public:
    explicit StandIn(QObject* object) : QAccessibleObject(object) { all().insert(this); }
    ~StandIn() override { all().remove(this); }
    Q_DISABLE_COPY_MOVE(StandIn)

    /// Every stand-in in Qt's cache of interfaces. The cache owns them.
    static QSet<StandIn*>& all() {
        static QSet<StandIn*> instances;
        return instances;
    }

    [[nodiscard]] QAccessibleInterface* parent() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text /*kind*/) const override { return {}; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::NoRole; }
    [[nodiscard]] QAccessible::State state() const override { return {}; }
};

class Activation : public QAccessible::ActivationObserver {
public:
    Activation() { QAccessible::installActivationObserver(this); }
    ~Activation() override { QAccessible::removeActivationObserver(this); }
    Q_DISABLE_COPY_MOVE(Activation)

    static Activation& instance() {
        static Activation activation;
        return activation;
    }
    [[nodiscard]] bool isActive() const { return active_; }

    void accessibilityActiveChanged(bool active) override {
        active_ = active;
        const QSet<StandIn*> standIns = active ? StandIn::all() : QSet<StandIn*>();
        for (StandIn* each : standIns)
            QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(each));
    }

private:
    bool active_ = QAccessible::isActive();
};

QAccessibleInterface* standIn(const QString& className, QObject* object) {
    return className.contains(u"_QML"_s) && !Activation::instance().isActive() ? new StandIn(object) : nullptr;
}

} // namespace

void installAccessibilityStandIns() {
    Activation::instance();
    QAccessible::installFactory(standIn);
}

} // namespace tarnwick
