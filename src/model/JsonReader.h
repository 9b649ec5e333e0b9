#pragma once

#include "Decoded.h"
#include "Instant.h"
#include "JsonFields.h"
#include "MenuBarItem.h"

#include <QByteArrayView>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QUuid>

#include <optional>

namespace tarnwick {

/// Reads records from JSON text. Each type of field has one rule: any other JSON type, null included, and a number that
/// the field cannot hold are errors. Unknown keys are ignored; of a key that is there twice the last one counts.
class JsonReader {
public:
    /// Whether a text may hold what JSON forbids but QJsonDocument accepts: an unknown escape in a string, for example,
    /// of which it drops the backslash.
    enum class Rules { lenient, strict };

    /// The record in a text that is one JSON object.
    template <typename Record, typename... Fields>
    [[nodiscard]] static Decoded<Record> decode(QByteArrayView json, const std::tuple<Fields...>& fields, Rules rules) {
        JsonReader reader;
        Record record;
        if (!reader.read(reader.parse(json, rules), record, fields))
            return reader.error_;
        return record;
    }

    /// The records in a text that is one JSON array of objects. They are parsed one at a time: a tree of a whole fleet
    /// would be several times its size, and leave holes in the memory.
    template <typename Record, typename... Fields>
    [[nodiscard]] static Decoded<QList<Record>> decodeList(QByteArrayView json, const std::tuple<Fields...>& fields) {
        const auto elements = arrayElements(json);
        if (!elements)
            return DecodingError{QStringLiteral("expected an array")};
        QList<Record> records;
        records.reserve(elements->size());
        for (const QByteArrayView element : *elements) {
            JsonReader reader;
            if (!reader.readElement(reader.parse(element, Rules::lenient), records, fields))
                return reader.error_;
        }
        return records;
    }

private:
    /// The object that a text holds. Any other value when it holds none; when it is no JSON, `error_` says why.
    QJsonValue parse(QByteArrayView json, Rules rules);
    /// The elements of the array that a text holds, as views into it; absent when the text is no array. The elements
    /// themselves are not checked.
    static std::optional<QList<QByteArrayView>> arrayElements(QByteArrayView json);

    // A read() that fails returns false and sets `error_`; its field is then untouched or partly read.
    bool read(const QJsonValue& value, bool& field, std::tuple<> noFields);
    bool read(const QJsonValue& value, QString& field, std::tuple<> noFields);
    /// A number without a fraction, in the range of 64 bits; 5.0 is one.
    bool read(const QJsonValue& value, qint64& field, std::tuple<> noFields);
    bool read(const QJsonValue& value, double& field, std::tuple<> noFields);
    /// The canonical 8-4-4-4-12 form, in either letter case, without braces.
    bool read(const QJsonValue& value, QUuid& field, std::tuple<> noFields);
    bool read(const QJsonValue& value, Instant& field, std::tuple<> noFields);
    bool read(const QJsonValue& value, MenuBarItemSet& field, std::tuple<> noFields);

    template <typename T, typename... Fields>
    bool read(const QJsonValue& value, std::optional<T>& field, const std::tuple<Fields...>& fields) {
        return read(value, field.emplace(), fields);
    }

    template <typename T, typename... Fields>
    bool read(const QJsonValue& value, QList<T>& field, const std::tuple<Fields...>& fields) {
        if (!value.isArray())
            return fail(QStringLiteral("expected an array"));
        const QJsonArray array = value.toArray();
        field.reserve(array.size());
        for (const QJsonValue element : array)
            if (!readElement(element, field, fields))
                return false;
        return true;
    }

    template <typename T, typename... Fields>
    bool readElement(const QJsonValue& value, QList<T>& list, const std::tuple<Fields...>& fields) {
        return read(value, list.emplaceBack(), fields) || failWithin(QStringLiteral("[%1] ").arg(list.size() - 1));
    }

    template <typename Record, typename... Fields>
    bool read(const QJsonValue& value, Record& record, const std::tuple<Fields...>& fields) {
        if (!value.isObject())
            return fail(QStringLiteral("expected an object"));
        const QJsonObject object = value.toObject();
        return std::apply([&](const auto&... field) { return (readMember(object, record, field) && ...); }, fields);
    }

    template <typename Record, typename Field>
    bool readMember(const QJsonObject& object, Record& record, const Field& field) {
        const QJsonValue value = object.value(field.key);
        if (!field.isRequired && (value.isUndefined() || value.isNull()))
            return true;
        const bool wasRead =
            value.isUndefined() ? fail(QStringLiteral("missing")) : read(value, record.*field.member, field.fields);
        return wasRead || failWithin(field.key + QStringLiteral(": "));
    }

    /// Sets the error, unless there is one. Returns false.
    bool fail(const QString& reason);
    /// Puts the place before the error. Returns false.
    bool failWithin(const QString& place);

    DecodingError error_;
};

} // namespace tarnwick
