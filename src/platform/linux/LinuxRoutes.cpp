#include "LinuxRoutes.h"

#include <QByteArrayList>
#include <QFile>

#include <bit>

#include <net/route.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// One of the two tables: its file, and the places of its words.
struct RouteTable {
    QLatin1StringView file;
    qsizetype reach; ///< IPv4: the mask, with a bit for each bit of the prefix; IPv6: the prefix's length
    bool isMask;
    qsizetype flags;
    int longestDefault; ///< VPN clients split the default in parts, so that they need not replace the one that is there
};
constexpr RouteTable tables[]{
    {"proc/net/route"_L1, 7, true, 3, 1},       // 0.0.0.0/1 and 128.0.0.0/1
    {"proc/net/ipv6_route"_L1, 1, false, 8, 4}, // 2000::/4 and 3000::/4
};

bool isDefault(const QByteArray& line, const RouteTable& table) {
    const QByteArrayList words = line.simplified().split(' ');
    bool isRoute = false;
    const uint flags = words.value(table.flags).toUInt(&isRoute, 16);
    const uint reach = words.value(table.reach).toUInt(nullptr, 16);
    return isRoute && (flags & RTF_UP) != 0 && (flags & RTF_REJECT) == 0 &&
           (table.isMask ? std::popcount(reach) : static_cast<int>(reach)) <= table.longestDefault;
}

} // namespace

bool LinuxRoutes::hasDefault(const QString& root) {
    bool canTell = false;
    for (const RouteTable& table : tables) {
        QFile file(root + table.file);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        canTell = true;
        for (QByteArray line; !(line = file.readLine()).isEmpty();)
            if (isDefault(line, table))
                return true;
    }
    return !canTell;
}

} // namespace tarnwick
