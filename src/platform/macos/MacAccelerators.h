#pragma once

#include <QList>
#include <QVariantMap>

namespace tarnwick {

/// The properties of the registry's "IOAccelerator" entries, in registry order, up to the first that reports its
/// utilisation. Of an entry's properties there is that figure alone; one that lacks it, or goes away meanwhile, has
/// none. Any thread.
[[nodiscard]] QList<QVariantMap> readMacAccelerators();

} // namespace tarnwick
