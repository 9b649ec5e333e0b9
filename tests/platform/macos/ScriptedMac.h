#pragma once

#include "FoundationReadings.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <QVariantMap>

#include <vector>

namespace tarnwick {

/// What the functions of a Mac answer, in place of a kernel, a registry and sensors. It writes down who calls them, and
/// keeps the ledger of what they hand out. Main thread only.
struct ScriptedMac {
    struct KernelValue {
        std::size_t toldSize = 0;           ///< when it is asked for its size
        std::optional<QByteArray> contents; ///< absent: it cannot be read
    };
    QHash<QByteArray, KernelValue> values;
    QSet<QString> failing; ///< the functions that return null or an error
    QSet<QString> lacking; ///< those that cannot be found by their name
    QList<unsigned> ticks{0, 0, 0, 0};
    QVariantList accelerators; ///< the properties of each; null: gone when it is asked for them
    QVariant services;         ///< a list of maps of "Product" and "celsius", or what is there in its place
    ProcessInformation process;

    QStringList calls; ///< "function(argument, …)", with an object as what it is

    /// What was handed out, by the number that is its handle; the first is no object.
    struct Object {
        QString kind;
        QVariant value;
        int owners = 0;
        quintptr whole = 0; ///< what it is a part of, and lives as long as
    };
    std::vector<Object> objects{Object()};
    QStringList faults; ///< what was used too late, or released too often

    [[nodiscard]] bool isAlive(quintptr object) const {
        return object != 0 && (objects.at(object).owners > 0 || isAlive(objects.at(object).whole));
    }
};

/// The Mac that the functions are of.
extern ScriptedMac mac;

} // namespace tarnwick
