#include "Coding.h"

#include "JsonReader.h"
#include "JsonWriter.h"

#include <QJsonDocument>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarnwick {

// Found by JsonReader through the namespace of the types they read.
static bool readJson(const QJsonValue& value, Instant& field, QString& error) {
    return readJson(value, field.secondsSinceReferenceDate, error);
}

static bool readJson(const QJsonValue& value, ContainerInfo& field, QString& error) {
    return JsonReader(value, error)
        .required("id"_L1, field.id)
        .required("name"_L1, field.name)
        .required("image"_L1, field.image)
        .required("status"_L1, field.status)
        .required("state"_L1, field.state)
        .required("ports"_L1, field.ports)
        .ok();
}

static bool readJson(const QJsonValue& value, ServerMetrics& field, QString& error) {
    return JsonReader(value, error)
        .required("cpuPercent"_L1, field.cpuPercent)
        .optional("gpuPercent"_L1, field.gpuPercent)
        .required("memoryUsedMB"_L1, field.memoryUsedMB)
        .required("memoryTotalMB"_L1, field.memoryTotalMB)
        .required("diskUsedGB"_L1, field.diskUsedGB)
        .required("diskTotalGB"_L1, field.diskTotalGB)
        .required("uptimeString"_L1, field.uptimeString)
        .required("loadAvg1m"_L1, field.loadAvg1m)
        .required("containers"_L1, field.containers)
        .required("latencyMs"_L1, field.latencyMs)
        .required("lastChecked"_L1, field.lastChecked)
        .optional("errorMessage"_L1, field.errorMessage)
        .ok();
}

static bool readJson(const QJsonValue& value, Server& field, QString& error) {
    return JsonReader(value, error)
        .required("id"_L1, field.id)
        .required("name"_L1, field.name)
        .required("host"_L1, field.host)
        .required("user"_L1, field.user)
        .required("port"_L1, field.port)
        .required("isLocal"_L1, field.isLocal)
        .required("dockerEnabled"_L1, field.dockerEnabled)
        .optional("customSshKeyPath"_L1, field.customSshKeyPath)
        .required("isEnabled"_L1, field.isEnabled)
        .optional("metrics"_L1, field.metrics)
        .ok();
}

static bool readJson(const QJsonValue& value, MenuBarItemSet& field, QString& error) {
    QStringList words;
    if (!readJson(value, words, error))
        return false;
    field.clear();
    for (const QString& word : words) {
        const auto item = menuBarItemFromRawValue(word);
        if (!item) {
            error = u"unknown item \"%1\""_s.arg(word);
            return false;
        }
        field.insert(*item);
    }
    return true;
}

static bool readJson(const QJsonValue& value, AppSettings& field, QString& error) {
    return JsonReader(value, error)
        .defaulted("refreshIntervalSeconds"_L1, field.refreshIntervalSeconds)
        .defaulted("alertDiskThresholdPercent"_L1, field.alertDiskThresholdPercent)
        .defaulted("alertRamThresholdPercent"_L1, field.alertRamThresholdPercent)
        .defaulted("showMenuBarLabel"_L1, field.showMenuBarLabel)
        .defaulted("pinnedMenuBarItems"_L1, field.pinnedMenuBarItems)
        .defaulted("soundAlerts"_L1, field.soundAlerts)
        .defaulted("launchAtLogin"_L1, field.launchAtLogin)
        .defaulted("firstLaunchDate"_L1, field.firstLaunchDate)
        .defaulted("hasCompletedOnboarding"_L1, field.hasCompletedOnboarding)
        .ok();
}

static void writeJson(QByteArray& json, const Instant& value) {
    writeJson(json, value.secondsSinceReferenceDate);
}

static void writeJson(QByteArray& json, const ContainerInfo& value) {
    JsonWriter(json)
        .member("id"_L1, value.id)
        .member("name"_L1, value.name)
        .member("image"_L1, value.image)
        .member("status"_L1, value.status)
        .member("state"_L1, value.state)
        .member("ports"_L1, value.ports);
}

static void writeJson(QByteArray& json, const ServerMetrics& value) {
    JsonWriter(json)
        .member("cpuPercent"_L1, value.cpuPercent)
        .member("gpuPercent"_L1, value.gpuPercent)
        .member("memoryUsedMB"_L1, value.memoryUsedMB)
        .member("memoryTotalMB"_L1, value.memoryTotalMB)
        .member("diskUsedGB"_L1, value.diskUsedGB)
        .member("diskTotalGB"_L1, value.diskTotalGB)
        .member("uptimeString"_L1, value.uptimeString)
        .member("loadAvg1m"_L1, value.loadAvg1m)
        .member("containers"_L1, value.containers)
        .member("latencyMs"_L1, value.latencyMs)
        .member("lastChecked"_L1, value.lastChecked)
        .member("errorMessage"_L1, value.errorMessage);
}

static void writeJson(QByteArray& json, const Server& value) {
    JsonWriter(json)
        .member("id"_L1, value.id)
        .member("name"_L1, value.name)
        .member("host"_L1, value.host)
        .member("user"_L1, value.user)
        .member("port"_L1, value.port)
        .member("isLocal"_L1, value.isLocal)
        .member("dockerEnabled"_L1, value.dockerEnabled)
        .member("customSshKeyPath"_L1, value.customSshKeyPath)
        .member("isEnabled"_L1, value.isEnabled)
        .member("metrics"_L1, value.metrics);
}

static void writeJson(QByteArray& json, const MenuBarItemSet& value) {
    QStringList words;
    for (const MenuBarItem item : value)
        words.append(rawValue(item));
    writeJson(json, words);
}

static void writeJson(QByteArray& json, const AppSettings& value) {
    JsonWriter(json)
        .member("refreshIntervalSeconds"_L1, value.refreshIntervalSeconds)
        .member("alertDiskThresholdPercent"_L1, value.alertDiskThresholdPercent)
        .member("alertRamThresholdPercent"_L1, value.alertRamThresholdPercent)
        .member("showMenuBarLabel"_L1, value.showMenuBarLabel)
        .member("pinnedMenuBarItems"_L1, value.pinnedMenuBarItems)
        .member("soundAlerts"_L1, value.soundAlerts)
        .member("launchAtLogin"_L1, value.launchAtLogin)
        .member("firstLaunchDate"_L1, value.firstLaunchDate)
        .member("hasCompletedOnboarding"_L1, value.hasCompletedOnboarding);
}

namespace {

bool allFinite(std::initializer_list<double> numbers) {
    return std::all_of(
        numbers.begin(), numbers.end(), [](double number) { return std::isfinite(number); });
}

bool isWritable(const Server& server) {
    if (!server.metrics)
        return true;
    const ServerMetrics& metrics = *server.metrics;
    return allFinite({metrics.cpuPercent, metrics.gpuPercent.value_or(0), metrics.memoryUsedMB, metrics.memoryTotalMB,
                      metrics.diskUsedGB, metrics.diskTotalGB, metrics.loadAvg1m,
                      metrics.lastChecked.secondsSinceReferenceDate});
}

/// The elements of the array that a text holds, as views into it; absent when the text is no array. What stands
/// between the separators is not looked into, save for the ends of strings and brackets.
std::optional<QList<QByteArrayView>> arrayElements(QByteArrayView json) {
    if (json.startsWith("\xef\xbb\xbf"))
        json = json.sliced(3);
    json = json.trimmed();
    if (json.size() < 2 || json.front() != '[' || json.back() != ']')
        return std::nullopt;
    json = json.sliced(1).chopped(1);
    if (json.trimmed().isEmpty())
        return QList<QByteArrayView>();
    QList<QByteArrayView> elements;
    qsizetype begin = 0;
    int depth = 0;
    bool inString = false;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (inString && c == '\\')
            ++i;
        else if (c == '"')
            inString = !inString;
        else if (inString)
            continue;
        else if (c == '[' || c == '{')
            ++depth;
        else if (c == ']' || c == '}')
            --depth;
        else if (c == ',' && depth == 0) {
            elements.append(json.sliced(begin, i - begin));
            begin = i + 1;
        }
    }
    elements.append(json.sliced(begin));
    return elements;
}

/// Reads the one object that a text holds.
template <typename T>
Decoded<T> decodeObject(QByteArrayView json) {
    QJsonParseError parseError;
    const auto document = QJsonDocument::fromJson(QByteArray::fromRawData(json.data(), json.size()), &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return DecodingError{u"%1 at byte %2"_s.arg(parseError.errorString()).arg(parseError.offset)};
    T result;
    QString error;
    if (!readJson(document.isObject() ? QJsonValue(document.object()) : QJsonValue(), result, error))
        return DecodingError{error};
    return result;
}

} // namespace

Decoded<QList<Server>> decodeServers(const QByteArray& json) {
    // One server at a time: a tree of the whole file would be several times its size, and leave the memory in holes.
    const auto elements = arrayElements(json);
    if (!elements)
        return DecodingError{u"expected an array"_s};
    QList<Server> servers;
    servers.reserve(elements->size());
    for (const QByteArrayView element : *elements) {
        auto server = decodeObject<Server>(element);
        if (const auto* error = std::get_if<DecodingError>(&server))
            return DecodingError{u"[%1] %2"_s.arg(servers.size()).arg(error->description)};
        servers.append(std::get<Server>(std::move(server)));
    }
    return servers;
}

std::optional<QByteArray> encodeServers(const QList<Server>& servers) {
    if (!std::all_of(servers.begin(), servers.end(), isWritable))
        return std::nullopt;
    QByteArray json;
    writeJson(json, servers);
    return json;
}

Decoded<AppSettings> decodeSettings(const QByteArray& json) {
    return decodeObject<AppSettings>(json);
}

std::optional<QByteArray> encodeSettings(const AppSettings& settings) {
    if (!allFinite({settings.alertDiskThresholdPercent, settings.alertRamThresholdPercent,
                    settings.firstLaunchDate.secondsSinceReferenceDate}))
        return std::nullopt;
    QByteArray json;
    writeJson(json, settings);
    return json;
}

} // namespace tarnwick
