#pragma once

#include <QByteArrayList>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Called by libFuzzer with each input. Returns 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace tarnwick {

/// Ends the process, which libFuzzer counts as a finding, unless the rule holds.
inline void require(bool holds, const char* rule) {
    if (holds)
        return;
    std::fprintf(stderr, "Broken rule: %s\n", rule);
    std::abort();
}

[[nodiscard]] inline QByteArray bytesOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)};
}

/// `count` fields of an input, which the byte 0xFF separates, because no text in UTF-8 has it. What is missing is
/// empty.
[[nodiscard]] inline QByteArrayList fieldsOf(const std::uint8_t* data, std::size_t size, qsizetype count) {
    QByteArrayList fields = bytesOf(data, size).split('\xff');
    fields.resize(count);
    return fields;
}

[[nodiscard]] inline bool hasControls(QStringView text) {
    return std::any_of(
        text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; });
}

} // namespace tarnwick
