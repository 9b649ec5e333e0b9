#include "ShownText.h"

namespace tarnwick {

namespace {

bool turnsDirection(QChar character) {
    const char16_t unit = character.unicode();
    return (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069);
}

bool breaksOut(QChar character) {
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

} // namespace

QString shownText(QStringView text, QStringView kept) {
    QString shown;
    shown.reserve(text.size());
    for (const QChar character : text)
        if (breaksOut(character) && !kept.contains(character))
            shown += u' ';
        else if (!turnsDirection(character))
            shown += character;
    return shown;
}

} // namespace tarnwick
