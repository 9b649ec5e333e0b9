#include "JsonReader.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// Calls visit(index, isInString) for each character of a JSON text. An escape in a string counts as one character.
template <typename Visit>
void scan(QByteArrayView json, Visit visit) {
    bool isInString = false;
    for (qsizetype i = 0; i < json.size(); ++i) {
        if (json[i] == '"')
            isInString = !isInString;
        visit(i, isInString);
        if (isInString && json[i] == '\\')
            ++i;
    }
}

bool isDigitAt(QByteArrayView text, qsizetype index) {
    return index >= 0 && index < text.size() && text[index] >= '0' && text[index] <= '9';
}

/// The first thing in the text that JSON forbids, although QJsonDocument accepted it. Empty when there is none.
QString leniency(QByteArrayView json) {
    if (json.startsWith("\xEF\xBB\xBF"))
        return u"byte order mark before the document"_s;
    QString found;
    scan(json, [&](qsizetype i, bool isInString) {
        const char c = json[i];
        if (!found.isEmpty())
            return;
        if (isInString && c == '\\' && !QByteArrayView(R"("\/bfnrtu)").contains(json[i + 1]))
            found = u"invalid escape sequence at byte %1"_s.arg(i + 1);
        else if (isInString && static_cast<unsigned char>(c) < 0x20)
            found = u"control character in a string at byte %1"_s.arg(i);
        else if (!isInString && c == '.' && !(isDigitAt(json, i - 1) && isDigitAt(json, i + 1)))
            found = u"illegal number at byte %1"_s.arg(i);
    });
    return found;
}

} // namespace

QJsonValue JsonReader::parse(QByteArrayView json, Rules rules) {
    QJsonParseError parseError;
    const auto document = QJsonDocument::fromJson(QByteArray::fromRawData(json.data(), json.size()), &parseError);
    if (parseError.error != QJsonParseError::NoError)
        error_.description = u"%1 at byte %2"_s.arg(parseError.errorString()).arg(parseError.offset);
    else if (rules == Rules::strict)
        error_.description = leniency(json);
    return error_.description.isEmpty() && document.isObject() ? QJsonValue(document.object()) : QJsonValue();
}

std::optional<QList<QByteArrayView>> JsonReader::arrayElements(QByteArrayView json) {
    if (json.startsWith("\xEF\xBB\xBF"))
        json = json.sliced(3);
    json = json.trimmed();
    if (json.size() < 2 || json.front() != '[' || json.back() != ']')
        return std::nullopt;
    json = json.sliced(1).chopped(1);
    QList<QByteArrayView> elements;
    if (json.trimmed().isEmpty())
        return elements;
    qsizetype begin = 0;
    int depth = 0;
    scan(json, [&](qsizetype i, bool isInString) {
        const char c = isInString ? '"' : json[i];
        if (c == '[' || c == '{')
            ++depth;
        else if (c == ']' || c == '}')
            --depth;
        else if (c == ',' && depth == 0) {
            elements.append(json.sliced(begin, i - begin));
            begin = i + 1;
        }
    });
    elements.append(json.sliced(begin));
    return elements;
}

bool JsonReader::read(const QJsonValue& value, bool& field, std::tuple<> /*noFields*/) {
    field = value.toBool();
    return value.isBool() || fail(u"expected true or false"_s);
}

bool JsonReader::read(const QJsonValue& value, QString& field, std::tuple<> /*noFields*/) {
    field = value.toString();
    return value.isString() || fail(u"expected a string"_s);
}

bool JsonReader::read(const QJsonValue& value, qint64& field, std::tuple<> /*noFields*/) {
    // toInteger() returns its default for anything that is not exactly an integer. So two defaults, 0 and 1, show
    // whether the value is one.
    field = value.toInteger(0);
    return (value.isDouble() && field == value.toInteger(1)) || fail(u"expected an integer of at most 64 bits"_s);
}

bool JsonReader::read(const QJsonValue& value, double& field, std::tuple<> /*noFields*/) {
    field = value.toDouble(); // finite: the parser refuses 1e400
    return value.isDouble() || fail(u"expected a number"_s);
}

bool JsonReader::read(const QJsonValue& value, QUuid& field, std::tuple<> /*noFields*/) {
    // QUuid also accepts braces, and any text after the last digit. What it then writes differs from what it read.
    const QString text = value.toString();
    field = QUuid::fromString(text);
    return field.toString(QUuid::WithoutBraces).compare(text, Qt::CaseInsensitive) == 0 || fail(u"expected a UUID"_s);
}

bool JsonReader::read(const QJsonValue& value, Instant& field, std::tuple<> noFields) {
    return read(value, field.secondsSinceReferenceDate, noFields);
}

bool JsonReader::read(const QJsonValue& value, MenuBarItemSet& field, std::tuple<> noFields) {
    QStringList words;
    if (!read(value, words, noFields))
        return false;
    field.clear();
    for (const QString& word : words) {
        const auto item = menuBarItemFromRawValue(word);
        if (!item)
            return fail(u"unknown item"_s);
        field.insert(*item);
    }
    return true;
}

bool JsonReader::fail(const QString& reason) {
    if (error_.description.isEmpty())
        error_.description = reason;
    return false;
}

bool JsonReader::failWithin(const QString& place) {
    error_.description.prepend(place);
    return false;
}

} // namespace tarnwick
