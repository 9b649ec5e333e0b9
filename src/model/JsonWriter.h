#pragma once

#include "Instant.h"
#include "JsonFields.h"
#include "MenuBarItem.h"

#include <QByteArray>
#include <QList>
#include <QUuid>

#include <optional>

namespace tarnwick {

/// Writes records as compact JSON text. It builds no tree of the document first: a large fleet is written every few
/// seconds, on the main thread.
class JsonWriter {
public:
    /// A record, or a list of records. Absent when a number in it is not finite.
    template <typename T, typename... Fields>
    [[nodiscard]] static std::optional<QByteArray> encode(const T& value, const std::tuple<Fields...>& fields) {
        JsonWriter writer;
        writer.write(value, fields);
        return writer.isFinite_ ? std::optional(std::move(writer.json_)) : std::nullopt;
    }

private:
    void write(bool value, std::tuple<> noFields);
    void write(qint64 value, std::tuple<> noFields);
    /// The shortest digits that read back as the same number; no fraction where there is none.
    void write(double value, std::tuple<> noFields);
    /// A forward slash as "\/", a lone surrogate as its escape: any text reads back as it was.
    void write(const QString& value, std::tuple<> noFields);
    /// Canonical form in upper case.
    void write(const QUuid& value, std::tuple<> noFields);
    void write(const Instant& value, std::tuple<> noFields);
    void write(const MenuBarItemSet& value, std::tuple<> noFields);

    template <typename T, typename... Fields>
    void write(const QList<T>& values, const std::tuple<Fields...>& fields) {
        json_.append('[');
        for (const T& value : values) {
            write(value, fields);
            json_.append(',');
        }
        end(']');
    }

    template <typename Record, typename... Fields>
    void write(const Record& record, const std::tuple<Fields...>& fields) {
        json_.append('{');
        std::apply([&](const auto&... field) { (writeMember(field.key, record.*field.member, field.fields), ...); },
                   fields);
        end('}');
    }

    template <typename T, typename... Fields>
    void writeMember(QLatin1StringView key, const T& value, const std::tuple<Fields...>& fields) {
        json_.append('"').append(key.data(), key.size()).append("\":");
        write(value, fields);
        json_.append(',');
    }

    template <typename T, typename... Fields>
    void writeMember(QLatin1StringView key, const std::optional<T>& value, const std::tuple<Fields...>& fields) {
        if (value)
            writeMember(key, *value, fields);
    }

    /// Closes an array or an object, in place of the comma after its last element.
    void end(char bracket);

    QByteArray json_;
    bool isFinite_ = true;
};

} // namespace tarnwick
