#include "ContainerRowContent.h"

#include "controls/DisplayText.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

ContainerRowContent containerRowContent(const ContainerInfo& container, const ContainerMarks& marks) {
    const bool running = container.isRunning();
    const bool isAsked = marks.askedId == container.id && container.canBeStopped();
    const QString& shownName = container.name.isEmpty() ? container.id : container.name;
    return {
        .id = container.id,
        .name = displayText(container.name),
        .image = displayText(container.image),
        .status = displayText(container.status),
        .stateWord = running ? u"running"_s : u"stopped"_s,
        .dotRole = running ? ColorRole::Role::Green : ColorRole::Role::Red,
        .shellEnabled = running,
        .shellHelp = running ? u"Enter container shell (docker exec)"_s : u"Container is stopped"_s,
        .failure = displayText(marks.failures.value(container.id)),
        .question = isAsked ? u"Stop %1?"_s.arg(displayText(shownName)) : QString(),
        .restarting = marks.busyId == container.id,
        .restartEnabled = !marks.busyId,
    };
}

} // namespace tarnwick
