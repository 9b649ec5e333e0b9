#include "HwmonNames.h"

#include <QRegularExpression>
#include <QStringList>

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

/// The drivers whose temperatures have a role, by subsystem; in lower case.
constexpr std::array roleRules{
    // processors
    RoleRule{u"coretemp", die},
    RoleRule{u"k10temp", die},
    RoleRule{u"k8temp", die},
    RoleRule{u"zenpower", die},
    RoleRule{u"via_cputemp", die},
    RoleRule{u"cputemp", die},
    RoleRule{u"sfctemp", die},
    RoleRule{u"imx", die},
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

/// The words by which thermal zones of systems on a chip say that they are on the die: cpu0_thermal, CPU_therm,
/// tj_thermal, cluster0_thermal, cpuss1_thermal, soc_thermal …
constexpr std::array<QStringView, 12> dieWords{u"cpu", u"cpuss",   u"gpu",        u"gpuss",   u"npu",    u"soc",
                                               u"tj",  u"bigcore", u"littlecore", u"cluster", u"center", u"package"};

/// A name has such a word, whatever its case and the number behind it.
bool namesDie(const QString& name) {
    static const QRegularExpression separator(u"[^a-z]+"_s);
    const QStringList words = name.toLower().split(separator);
    return std::any_of(dieWords.begin(), dieWords.end(), [&](QStringView word) { return words.contains(word); });
}

QStringView roleOf(const HwmonInput& input) {
    // Some Ryzen processors add an offset to Tctl to control the fan; where there is a Tdie, that is the temperature.
    // The memory beside a graphics processor is not on its die.
    if ((input.label == u"Tctl" && input.besideTrueDie) || input.label == u"mem" || input.label == u"vram")
        return {};
    if (input.label.contains(u"VRM", Qt::CaseInsensitive))
        return powerDelivery;
    if (input.isSpinning)
        return {};
    const QString driver = input.driver.toLower();
    if (driver.startsWith(u"macsmc")) { // one device for the whole machine: only the labels differ
        if (input.label.contains(u"NAND", Qt::CaseInsensitive))
            return storage;
        return namesDie(input.label) ? die : QStringView();
    }
    const auto rule = std::find_if(roleRules.begin(), roleRules.end(),
                                   [&](const RoleRule& each) { return driver.startsWith(each.prefix); });
    if (rule != roleRules.end())
        return rule->role;
    return namesDie(driver) ? die : QStringView();
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
