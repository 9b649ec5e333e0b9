#include "HwmonNames.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr QStringView die = u"tdie";
constexpr QStringView powerDelivery = u"tdev";
constexpr QStringView storage = u"SSD";

struct RoleRule {
    QStringView prefix; ///< of the driver's name
    QStringView role;
};

/// The Linux drivers whose temperatures have a role.
constexpr std::array roleRules{
    // processors of PCs
    RoleRule{u"coretemp", die},
    RoleRule{u"k10temp", die},
    RoleRule{u"k8temp", die},
    RoleRule{u"zenpower", die},
    RoleRule{u"via_cputemp", die},
    // thermal zones of single-board computers and other systems on a chip: cpu_thermal, soc_thermal, gpu_thermal …
    RoleRule{u"cpu", die},
    RoleRule{u"soc_", die},
    RoleRule{u"soc-", die},
    RoleRule{u"gpu", die},
    RoleRule{u"bigcore", die},
    RoleRule{u"littlecore", die},
    // graphics
    RoleRule{u"amdgpu", die},
    RoleRule{u"radeon", die},
    RoleRule{u"nouveau", die},
    RoleRule{u"i915", die},
    RoleRule{u"xe", die},
    // voltage regulators on PMBus
    RoleRule{u"pmbus", powerDelivery},
    RoleRule{u"ir3", powerDelivery},
    RoleRule{u"isl68", powerDelivery},
    RoleRule{u"mp28", powerDelivery},
    RoleRule{u"mp29", powerDelivery},
    RoleRule{u"tps53", powerDelivery},
    RoleRule{u"xdpe1", powerDelivery},
    // drives
    RoleRule{u"nvme", storage},
    RoleRule{u"drivetemp", storage},
};

QStringView roleOf(const HwmonInput& input) {
    // Some Ryzen processors add an offset to Tctl to control the fan; where there is a Tdie, that is the temperature.
    // The memory beside a graphics processor is not on its die.
    if ((input.label == u"Tctl" && input.besideTrueDie) || input.label == u"mem" || input.label == u"vram")
        return {};
    if (input.label.contains(u"VRM", Qt::CaseInsensitive))
        return powerDelivery;
    const auto rule = std::find_if(roleRules.begin(), roleRules.end(),
                                   [&](const RoleRule& each) { return input.driver.startsWith(each.prefix); });
    return rule == roleRules.end() ? QStringView() : rule->role;
}

} // namespace

QString hwmonSensorName(const HwmonInput& input) {
    QString name = roleOf(input).toString();
    const auto append = [&](const QString& part) {
        name += (name.isEmpty() || part.isEmpty() ? u""_s : u" "_s) + part;
    };
    append(input.driver);
    if (!input.label.isEmpty())
        append(input.label);
    else if (!input.isOnly)
        append(u"temp%1"_s.arg(input.number));
    return name;
}

} // namespace tarnwick
