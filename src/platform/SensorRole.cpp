#include "SensorRole.h"

#include <algorithm>
#include <array>

namespace tarnwick {

namespace {

struct RoleRule {
    QStringView part; ///< of the sensor's name, in any case
    SensorRole role;
};

/// The first rule that matches decides; storage comes first.
constexpr std::array roleRules{
    RoleRule{u"nand", SensorRole::storage},
    RoleRule{u"ssd", SensorRole::storage},
    RoleRule{u"tdie", SensorRole::die},
    RoleRule{u"tdev", SensorRole::powerDelivery},
};

} // namespace

SensorRole sensorRole(const QString& product) {
    const auto* rule = std::ranges::find_if(
        roleRules, [&](const RoleRule& each) { return product.contains(each.part, Qt::CaseInsensitive); });
    return rule == roleRules.end() ? SensorRole::other : rule->role;
}

SensorGroup sensorGroup(const QString& product) {
    switch (sensorRole(product)) {
    case SensorRole::storage:
        return SensorGroup::drives;
    case SensorRole::die:
    case SensorRole::powerDelivery:
        return SensorGroup::processor;
    case SensorRole::other:
        break;
    }
    return SensorGroup::others;
}

} // namespace tarnwick
