#pragma once

#include <QByteArray>
#include <QLatin1StringView>
#include <QList>
#include <QStringView>
#include <QUuid>

#include <optional>

namespace tarnwick {

/// writeJson() appends one value as compact JSON to a text. No tree of the document stands beside it: a large fleet is
/// written every few seconds, on the main thread.
void writeJson(QByteArray& json, bool value);
void writeJson(QByteArray& json, qint64 value);
/// The shortest digits that read back as the same number; no fraction where there is none. Finite numbers only.
void writeJson(QByteArray& json, double value);
/// A forward slash as "\/", a lone surrogate as its escape: any text reads back as it was.
void writeJson(QByteArray& json, const QString& value);
/// Canonical form in upper case.
void writeJson(QByteArray& json, const QUuid& value);

template <typename T>
void writeJson(QByteArray& json, const QList<T>& values) {
    json.append('[');
    const char* separator = "";
    for (const T& value : values) {
        json.append(separator);
        writeJson(json, value);
        separator = ",";
    }
    json.append(']');
}

/// Appends the members of one JSON object, in the order they are given.
class JsonWriter {
public:
    explicit JsonWriter(QByteArray& json) : json_(json) { json_.append('{'); }
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;
    ~JsonWriter() { json_.append('}'); }

    template <typename T>
    JsonWriter& member(QLatin1StringView key, const T& value) {
        json_.append(separator_).append('"').append(key.data(), key.size()).append("\":");
        separator_ = ",";
        writeJson(json_, value);
        return *this;
    }

    /// Left out when absent.
    template <typename T>
    JsonWriter& member(QLatin1StringView key, const std::optional<T>& value) {
        return value ? member(key, *value) : *this;
    }

private:
    QByteArray& json_;
    const char* separator_ = "";
};

} // namespace tarnwick
