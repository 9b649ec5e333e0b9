#include "MacWords.h"

namespace tarnwick {

const SystemWords& systemWords() {
    return macWords;
}

} // namespace tarnwick
