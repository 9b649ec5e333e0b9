#pragma once

#include "ContainerInfo.h"

#include <QLatin1StringView>

#include <tuple>

namespace tarnwick {

/// One member of a record as JSON. The members of a record are a std::tuple of these, which JsonReader and JsonWriter
/// share.
template <typename Record, typename T, typename Fields>
struct JsonField {
    QLatin1StringView key;
    T Record::*member;
    bool isRequired;
    Fields fields; ///< of the record, or records, in this member; empty for plain values
};

/// The key must be present, and not null.
template <typename Record, typename T, typename Fields = std::tuple<>>
constexpr JsonField<Record, T, Fields> required(QLatin1StringView key, T Record::*member, Fields fields = {}) {
    return {key, member, true, fields};
}

/// A missing key or a null leaves the member as it is. A std::optional without a value is not written.
template <typename Record, typename T, typename Fields = std::tuple<>>
constexpr JsonField<Record, T, Fields> optional(QLatin1StringView key, T Record::*member, Fields fields = {}) {
    return {key, member, false, fields};
}

/// All of a container's members but `ports`, which a stored container must have and a probe's may lack.
inline constexpr std::tuple containerFieldsBeforePorts{
    required(QLatin1StringView("id"), &ContainerInfo::id),
    required(QLatin1StringView("name"), &ContainerInfo::name),
    required(QLatin1StringView("image"), &ContainerInfo::image),
    required(QLatin1StringView("status"), &ContainerInfo::status),
    required(QLatin1StringView("state"), &ContainerInfo::state),
};

} // namespace tarnwick
