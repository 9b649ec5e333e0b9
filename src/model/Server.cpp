#include "Server.h"

#include <QHashFunctions>

namespace tarnwick {

size_t qHash(const Server& server, size_t seed) noexcept {
    const size_t metricsHash = server.metrics ? qHash(*server.metrics, seed) : seed;
    return qHashMulti(seed, server.id, server.name, server.host, server.user, server.port, server.isLocal,
                      server.dockerEnabled, server.customSshKeyPath.value_or(QString()), server.isEnabled, metricsHash);
}

QString uuidString(const QUuid& id) {
    return id.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace tarnwick
