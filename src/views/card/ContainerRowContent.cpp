#include "ContainerRowContent.h"

#include "controls/DisplayText.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

ContainerRowContent containerRowContent(const ContainerInfo& container,
                                        const std::optional<QString>& restartingContainerId) {
    const bool running = container.isRunning();
    return {
        .id = container.id,
        .name = displayText(container.name),
        .image = displayText(container.image),
        .status = displayText(container.status),
        .stateWord = running ? u"running"_s : u"stopped"_s,
        .dotRole = running ? ColorRole::Role::Green : ColorRole::Role::Red,
        .shellEnabled = running,
        .shellHelp = running ? u"Enter container shell (docker exec)"_s : u"Container is stopped"_s,
        .restarting = restartingContainerId == container.id,
        .restartEnabled = !restartingContainerId,
    };
}

} // namespace tarnwick
