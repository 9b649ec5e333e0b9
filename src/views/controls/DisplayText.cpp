#include "DisplayText.h"

#include <QStringView>

namespace tarnwick {

namespace {

constexpr qsizetype longest = 300;

bool turnsDirection(QChar character) {
    const char16_t unit = character.unicode();
    return (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069);
}

bool breaksLine(QChar character) {
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

} // namespace

QString displayText(const QString& text) {
    QStringView shown(text);
    const bool cut = shown.size() > longest;
    if (cut) {
        shown.truncate(longest);
        if (shown.back().isHighSurrogate())
            shown.chop(1);
    }
    QString result;
    result.reserve(shown.size() + 1);
    for (const QChar character : shown)
        if (breaksLine(character))
            result += u' ';
        else if (!turnsDirection(character))
            result += character;
    result = std::move(result).trimmed();
    return cut ? result + QChar(0x2026) : result;
}

} // namespace tarnwick
