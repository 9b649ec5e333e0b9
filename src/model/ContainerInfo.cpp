#include "ContainerInfo.h"

#include <QHashFunctions>

namespace tarnwick {

namespace {
QString withoutOuterSlashes(const QString& name) {
    qsizetype begin = 0;
    qsizetype end = name.size();
    while (begin < end && name.at(begin) == u'/')
        ++begin;
    while (end > begin && name.at(end - 1) == u'/')
        --end;
    return name.sliced(begin, end - begin);
}
} // namespace

ContainerInfo::ContainerInfo(QString id_, const QString& name_, QString image_, QString status_, QString state_,
                             QString ports_)
    : id(std::move(id_))
    , name(withoutOuterSlashes(name_))
    , image(std::move(image_))
    , status(std::move(status_))
    , state(std::move(state_))
    , ports(std::move(ports_)) {}

bool ContainerInfo::isRunning() const {
    return state.compare(u"running", Qt::CaseInsensitive) == 0;
}

bool ContainerInfo::canBeStopped() const {
    return isRunning() || state.compare(u"paused", Qt::CaseInsensitive) == 0 ||
           state.compare(u"restarting", Qt::CaseInsensitive) == 0;
}

size_t qHash(const ContainerInfo& container, size_t seed) noexcept {
    return qHashMulti(seed, container.id, container.name, container.image, container.status, container.state,
                      container.ports);
}

} // namespace tarnwick
