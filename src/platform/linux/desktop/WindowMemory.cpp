#include "WindowMemory.h"

#include "FreeMemory.h"

#include <QFont>

namespace tarnwick {

void returnWindowMemory() {
    QFont::cleanup(); // 1.2 MB: a font's tables, read for the shaping of text
    returnFreeMemory();
}

} // namespace tarnwick
