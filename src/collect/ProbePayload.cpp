#include "ProbePayload.h"

#include "JsonReader.h"

#include <QByteArrayView>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace tarnwick {

// Not in the nameless namespace: the reader finds them by their argument's type.
static bool readJson(const QJsonValue& value, RawContainer& container, QString& error) {
    return JsonReader(value, error)
        .required("id"_L1, container.id)
        .required("name"_L1, container.name)
        .required("image"_L1, container.image)
        .required("status"_L1, container.status)
        .required("state"_L1, container.state)
        .defaulted("ports"_L1, container.ports)
        .ok();
}

static bool readJson(const QJsonValue& value, RawPayload& payload, QString& error) {
    return JsonReader(value, error)
        .optional("cpu"_L1, payload.cpu)
        .optional("gpu"_L1, payload.gpu)
        .optional("mem_used"_L1, payload.mem_used)
        .optional("mem_total"_L1, payload.mem_total)
        .optional("disk_used"_L1, payload.disk_used)
        .optional("disk_total"_L1, payload.disk_total)
        .optional("load"_L1, payload.load)
        .optional("uptime"_L1, payload.uptime)
        .optional("containers"_L1, payload.containers)
        .ok();
}

namespace {

bool isDigitAt(QByteArrayView text, qsizetype index) {
    return index >= 0 && index < text.size() && text[index] >= '0' && text[index] <= '9';
}

/// What QJsonDocument lets pass in a text that it accepts, but JSON does not: a container's status with a backslash
/// would lose it silently. Empty when there is nothing.
QString leniency(QByteArrayView json) {
    if (json.startsWith("\xEF\xBB\xBF"))
        return u"byte order mark before the document"_s;
    bool inString = false;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (c == '"')
            inString = !inString;
        else if (inString && c == '\\' && !QByteArrayView(R"("\/bfnrtu)").contains(json[++i]))
            return u"invalid escape sequence at byte %1"_s.arg(i);
        else if (inString && static_cast<unsigned char>(c) < 0x20)
            return u"control character in a string at byte %1"_s.arg(i);
        else if (!inString && c == '.' && !(isDigitAt(json, i - 1) && isDigitAt(json, i + 1)))
            return u"illegal number at byte %1"_s.arg(i);
    }
    return {};
}

/// Absent, with `error` set, when the bytes are not a probe line.
std::optional<RawPayload> decode(const QByteArray& bytes, QString& error) {
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        error = u"%1 at byte %2"_s.arg(parseError.errorString()).arg(parseError.offset);
        return std::nullopt;
    }
    error = leniency(bytes);
    RawPayload payload;
    const QJsonValue value = document.isObject() ? QJsonValue(document.object()) : QJsonValue(document.array());
    if (!error.isEmpty() || !readJson(value, payload, error))
        return std::nullopt;
    return payload;
}

} // namespace

ServerMetrics parseMetrics(const QByteArray& bytes, qint64 latencyMs) {
    QString error;
    const std::optional<RawPayload> payload = decode(bytes, error);
    if (!payload)
        return ServerMetrics::offline(u"Failed to parse metrics: "_s + error);

    ServerMetrics metrics;
    metrics.cpuPercent = payload->cpu.value_or(0);
    metrics.gpuPercent = payload->gpu;
    metrics.memoryUsedMB = payload->mem_used.value_or(0);
    metrics.memoryTotalMB = payload->mem_total.value_or(0);
    metrics.diskUsedGB = payload->disk_used.value_or(0);
    metrics.diskTotalGB = payload->disk_total.value_or(0);
    metrics.uptimeString = payload->uptime.value_or(QString());
    metrics.loadAvg1m = payload->load.value_or(0);
    if (payload->containers)
        for (const RawContainer& row : *payload->containers)
            metrics.containers.append({row.id, row.name, row.image, row.status, row.state, row.ports});
    metrics.latencyMs = latencyMs;
    metrics.lastChecked = Instant::now();
    return metrics;
}

} // namespace tarnwick
