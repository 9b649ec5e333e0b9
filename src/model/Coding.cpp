#include "Coding.h"

#include "JsonReader.h"
#include "JsonWriter.h"
#include "StoredFields.h"

namespace tarnwick {

Decoded<QList<Server>> decodeServers(const QByteArray& json) {
    return JsonReader::decodeList<Server>(json, serverFields);
}

std::optional<QByteArray> encodeServers(const QList<Server>& servers) {
    return JsonWriter::encode(servers, serverFields);
}

Decoded<AppSettings> decodeSettings(const QByteArray& json) {
    return JsonReader::decode<AppSettings>(json, settingsFields, JsonReader::Rules::lenient);
}

std::optional<QByteArray> encodeSettings(const AppSettings& settings) {
    return JsonWriter::encode(settings, settingsFields);
}

} // namespace tarnwick
