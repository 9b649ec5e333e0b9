#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QLatin1StringView>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace tarnwick {

/// readJson() reads one JSON value into a field of that type. There is one overload per type, and each has one rule:
/// any other JSON type, null included, and a number that the field cannot hold fail. On failure the field is untouched
/// or partly read, and `error` says what was expected, after the keys that lead there.
[[nodiscard]] bool readJson(const QJsonValue& value, bool& field, QString& error);
[[nodiscard]] bool readJson(const QJsonValue& value, QString& field, QString& error);
/// A number without a fraction, in the range of 64 bits; 5.0 is one.
[[nodiscard]] bool readJson(const QJsonValue& value, qint64& field, QString& error);
[[nodiscard]] bool readJson(const QJsonValue& value, double& field, QString& error);
/// The canonical 8-4-4-4-12 form, in either letter case, without braces.
[[nodiscard]] bool readJson(const QJsonValue& value, QUuid& field, QString& error);

template <typename T>
[[nodiscard]] bool readJson(const QJsonValue& value, QList<T>& field, QString& error) {
    if (!value.isArray()) {
        error = QStringLiteral("expected an array");
        return false;
    }
    const QJsonArray array = value.toArray();
    field.reserve(array.size());
    for (const QJsonValue element : array) {
        if (!readJson(element, field.emplaceBack(), error)) {
            error.prepend(QStringLiteral("[%1] ").arg(field.size() - 1));
            return false;
        }
    }
    return true;
}

/// Reads the members of one JSON object, one rule per kind of key. The first failure ends the reading. Unknown keys
/// are ignored; of a key that is there twice the last one counts.
class JsonReader {
public:
    JsonReader(const QJsonValue& value, QString& error)
        : object_(value.toObject()), error_(error), ok_(value.isObject()) {
        if (!ok_)
            error_ = QStringLiteral("expected an object");
    }

    /// The key must be there.
    template <typename T>
    JsonReader& required(QLatin1StringView key, T& field) {
        if (ok_ && !object_.contains(key))
            fail(key, QStringLiteral("missing"));
        else if (ok_)
            read(key, object_.value(key), field);
        return *this;
    }

    /// A missing key or a null is absence.
    template <typename T>
    JsonReader& optional(QLatin1StringView key, std::optional<T>& field) {
        if (const QJsonValue value = object_.value(key); ok_ && !value.isUndefined() && !value.isNull())
            read(key, value, field.emplace());
        return *this;
    }

    /// A missing key or a null leaves the field as it is.
    template <typename T>
    JsonReader& defaulted(QLatin1StringView key, T& field) {
        if (const QJsonValue value = object_.value(key); ok_ && !value.isUndefined() && !value.isNull())
            read(key, value, field);
        return *this;
    }

    [[nodiscard]] bool ok() const { return ok_; }

private:
    template <typename T>
    void read(QLatin1StringView key, const QJsonValue& value, T& field) {
        if (QString reason; !readJson(value, field, reason))
            fail(key, reason);
    }
    void fail(QLatin1StringView key, const QString& reason) {
        error_ = QStringLiteral("%1: %2").arg(key, reason);
        ok_ = false;
    }

    QJsonObject object_;
    QString& error_;
    bool ok_;
};

} // namespace tarnwick
