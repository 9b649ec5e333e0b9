#include "JsonWriter.h"

#include <QLocale>
#include <QStringList>

#include <cmath>

namespace tarnwick {

namespace {

void appendEscaped(QByteArray& json, char16_t unit) {
    switch (unit) {
    case u'"':
    case u'\\':
    case u'/':
        json.append('\\').append(static_cast<char>(unit));
        break;
    case u'\n':
        json.append("\\n");
        break;
    case u'\r':
        json.append("\\r");
        break;
    case u'\t':
        json.append("\\t");
        break;
    default:
        json.append("\\u").append(QByteArray::number(unit, 16).rightJustified(4, '0'));
    }
}

bool needsEscape(QChar unit) {
    return unit < u' ' || unit == u'"' || unit == u'\\' || unit == u'/' || unit.isSurrogate();
}

} // namespace

void JsonWriter::write(bool value, std::tuple<> /*noFields*/) {
    json_.append(value ? "true" : "false");
}

void JsonWriter::write(qint64 value, std::tuple<> /*noFields*/) {
    json_.append(QByteArray::number(value));
}

void JsonWriter::write(double value, std::tuple<> /*noFields*/) {
    isFinite_ = isFinite_ && std::isfinite(value);
    json_.append(QByteArray::number(value, 'g', QLocale::FloatingPointShortest));
}

void JsonWriter::write(const QString& value, std::tuple<> /*noFields*/) {
    const QStringView text(value);
    json_.append('"');
    qsizetype plainBegin = 0; // the characters from here to i need no escape
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!needsEscape(text[i]))
            continue;
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        json_.append(text.sliced(plainBegin, i - plainBegin).toUtf8());
        appendEscaped(json_, text[i].unicode());
        plainBegin = i + 1;
    }
    json_.append(text.sliced(plainBegin).toUtf8()).append('"');
}

void JsonWriter::write(const QUuid& value, std::tuple<> /*noFields*/) {
    json_.append('"').append(value.toByteArray(QUuid::WithoutBraces).toUpper()).append('"');
}

void JsonWriter::write(const Instant& value, std::tuple<> noFields) {
    write(value.secondsSinceReferenceDate, noFields);
}

void JsonWriter::write(const MenuBarItemSet& value, std::tuple<> noFields) {
    QStringList words;
    for (const MenuBarItem item : value)
        words.append(rawValue(item));
    write(words, noFields);
}

void JsonWriter::end(char bracket) {
    if (json_.endsWith(','))
        json_.back() = bracket;
    else
        json_.append(bracket);
}

} // namespace tarnwick
