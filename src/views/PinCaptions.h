#pragma once

#include "MenuBarItem.h"
#include "SystemWords.h"

namespace tarnwick {

/// What the captions of pins say on a system with these words.
[[nodiscard]] inline PinWords pinWords(const SystemWords& words) {
    return {.ownFigure = words.ownFigure, .processor = words.processor};
}

} // namespace tarnwick
