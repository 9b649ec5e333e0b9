#include "JsonReader.h"

namespace tarnwick {

bool readJson(const QJsonValue& value, bool& field, QString& error) {
    field = value.toBool();
    if (!value.isBool())
        error = QStringLiteral("expected true or false");
    return value.isBool();
}

bool readJson(const QJsonValue& value, QString& field, QString& error) {
    field = value.toString();
    if (!value.isString())
        error = QStringLiteral("expected a string");
    return value.isString();
}

bool readJson(const QJsonValue& value, qint64& field, QString& error) {
    // toInteger() gives its default for anything that is not exactly an integer; no value equals both defaults.
    field = value.toInteger(0);
    const bool isInteger = value.isDouble() && field == value.toInteger(1);
    if (!isInteger)
        error = QStringLiteral("expected an integer of at most 64 bits");
    return isInteger;
}

bool readJson(const QJsonValue& value, double& field, QString& error) {
    field = value.toDouble(); // finite: the parser refuses 1e400
    if (!value.isDouble())
        error = QStringLiteral("expected a number");
    return value.isDouble();
}

bool readJson(const QJsonValue& value, QUuid& field, QString& error) {
    // QUuid is lenient about braces and about what follows the last digit: what it writes must be what it read.
    const QString text = value.toString();
    field = QUuid::fromString(text);
    const bool isCanonical = field.toString(QUuid::WithoutBraces).compare(text, Qt::CaseInsensitive) == 0;
    if (!isCanonical)
        error = QStringLiteral("expected a UUID");
    return isCanonical;
}

} // namespace tarnwick
