#pragma once

#include "ContainerRowContent.h"
#include "MetricBarContent.h"
#include "Server.h"
#include "SystemWords.h"
#include "controls/ColorRole.h"
#include "controls/TrendContent.h"

#include <QList>
#include <QString>
#include <QtQmlIntegration>

#include <optional>

namespace tarnwick {

/// What a card depends on besides its server.
struct CardState {
    bool isExpanded = false;
    bool isDragged = false;
    ContainerMarks containers = {};
    double avgSoc = 0;                     ///< °C, for the local server; 0: no reading
    std::optional<double> gpuPercent = {}; ///< of this computer, for the local server

    friend bool operator==(const CardState&, const CardState&) = default;
};

/// Everything a server card shows, and the id of its server. An element whose text is empty is not shown.
struct ServerCardContent {
    Q_GADGET
    QML_VALUE_TYPE(serverCardContent)
    Q_PROPERTY(QUuid id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString address MEMBER address)
    Q_PROPERTY(QString statusWord MEMBER statusWord)
    Q_PROPERTY(tarnwick::ColorRole::Role dotRole MEMBER dotRole)
    Q_PROPERTY(tarnwick::TrendContent healthTrend MEMBER healthTrend)
    Q_PROPERTY(bool isEnabled MEMBER isEnabled)
    Q_PROPERTY(bool isLocal MEMBER isLocal)
    Q_PROPERTY(QString temperatureText MEMBER temperatureText)
    Q_PROPERTY(QString latencyText MEMBER latencyText)
    Q_PROPERTY(tarnwick::TrendContent latencyTrend MEMBER latencyTrend)
    Q_PROPERTY(QString pauseSymbol MEMBER pauseSymbol)
    Q_PROPERTY(QString pauseHelp MEMBER pauseHelp)
    Q_PROPERTY(tarnwick::ColorRole::Role pauseRole MEMBER pauseRole)
    Q_PROPERTY(QString notice MEMBER notice)
    Q_PROPERTY(bool isChecking MEMBER isChecking)
    Q_PROPERTY(bool hasFailed MEMBER hasFailed)
    Q_PROPERTY(QString errorText MEMBER errorText)
    Q_PROPERTY(QString errorAdvice MEMBER errorAdvice)
    Q_PROPERTY(int barCount READ barCount)
    Q_PROPERTY(bool isExpanded MEMBER isExpanded)
    Q_PROPERTY(QString containersText MEMBER containersText)
    Q_PROPERTY(QString expandText MEMBER expandText)
    Q_PROPERTY(QString expandSymbol MEMBER expandSymbol)
    Q_PROPERTY(QList<tarnwick::ContainerRowContent> containers MEMBER containers)
    Q_PROPERTY(bool hasHardwareRow MEMBER hasHardwareRow)
    Q_PROPERTY(bool isDragged MEMBER isDragged)

public:
    QUuid id;
    QString name;
    QString address;
    QString statusWord; ///< for screen readers
    TrendContent healthTrend;
    QString temperatureText;
    QString latencyText;
    TrendContent latencyTrend;
    QString pauseSymbol;
    QString pauseHelp;
    QString notice; ///< in place of the metrics: paused, or checking
    QString errorText;
    QString errorAdvice; ///< what to do about it
    QList<MetricBarContent> bars;
    QString containersText;
    QString expandText;
    QString expandSymbol;
    QList<ContainerRowContent> containers;
    ColorRole::Role dotRole = ColorRole::Role::Gray;
    ColorRole::Role pauseRole = ColorRole::Role::Secondary;
    bool isEnabled = true;
    bool isLocal = false;
    bool isChecking = false;
    bool hasFailed = false;
    bool isExpanded = false; ///< the container list is open; never without containers
    bool hasHardwareRow = false;
    bool isDragged = false;

    [[nodiscard]] int barCount() const { return static_cast<int>(bars.size()); }
    /// An empty bar beyond the last.
    Q_INVOKABLE [[nodiscard]] tarnwick::MetricBarContent bar(int index) const { return bars.value(index); }
};

/// The dot's meaning: "paused", "checking", or the health verdict's own word.
[[nodiscard]] QString statusWord(const Server& server);
/// `trend` may be null: then the card has no charts.
[[nodiscard]] ServerCardContent serverCardContent(const Server& server, const CardState& state,
                                                  const SystemWords& words, const ServerTrend* trend = nullptr);

} // namespace tarnwick
