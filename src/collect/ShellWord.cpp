#include "ShellWord.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

bool ShellWord::isPlain(const QString& value) {
    constexpr QStringView plainMarks = u"@%+:,./_-";
    return !value.isEmpty() && std::ranges::all_of(value, [=](QChar c) {
        return c.unicode() < 0x80 && (c.isLetterOrNumber() || plainMarks.contains(c));
    });
}

QString ShellWord::quoted(const QString& value) {
    // Some shells interpret three characters even in single quotes: the quote itself, the backslash (fish) and the
    // exclamation mark (csh).
    QString escaped = u"'"_s;
    for (const QChar c : value)
        if (c.category() == QChar::Other_Control)
            escaped += u'?';
        else if (c == u'\'' || c == u'\\' || c == u'!')
            escaped += u"'\\"_s + c + u'\'';
        else
            escaped += c;
    return escaped + u'\'';
}

QString ShellWord::operand(const QString& value) {
    return (value.startsWith(u'-') ? u"-- "_s : QString()) + (isPlain(value) ? value : quoted(value));
}

} // namespace tarnwick
