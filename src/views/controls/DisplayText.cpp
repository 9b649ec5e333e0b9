#include "DisplayText.h"

#include "ShownText.h"

#include <QStringView>

namespace tarnwick {

namespace {

constexpr qsizetype longest = 300;

} // namespace

QString displayText(const QString& text) {
    QStringView shown(text);
    const bool cut = shown.size() > longest;
    if (cut) {
        shown.truncate(longest);
        if (shown.back().isHighSurrogate())
            shown.chop(1);
    }
    const QString result = shownText(shown).trimmed();
    return cut ? result + QChar(0x2026) : result;
}

} // namespace tarnwick
