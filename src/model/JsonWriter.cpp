#include "JsonWriter.h"

#include <QLocale>

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

void writeJson(QByteArray& json, bool value) {
    json.append(value ? "true" : "false");
}

void writeJson(QByteArray& json, qint64 value) {
    json.append(QByteArray::number(value));
}

void writeJson(QByteArray& json, double value) {
    json.append(QByteArray::number(value, 'g', QLocale::FloatingPointShortest));
}

void writeJson(QByteArray& json, const QString& value) {
    const QStringView text(value);
    json.append('"');
    qsizetype plainBegin = 0; // what stands from here to i is written as it is
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!needsEscape(text[i]))
            continue;
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        json.append(text.sliced(plainBegin, i - plainBegin).toUtf8());
        appendEscaped(json, text[i].unicode());
        plainBegin = i + 1;
    }
    json.append(text.sliced(plainBegin).toUtf8()).append('"');
}

void writeJson(QByteArray& json, const QUuid& value) {
    json.append('"').append(value.toByteArray(QUuid::WithoutBraces).toUpper()).append('"');
}

} // namespace tarnwick
