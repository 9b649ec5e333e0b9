#include "AlertRound.h"

#include "AlertRules.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int postedOneByOne = 3;
/// Notification services show a few lines of some fifty characters.
constexpr qsizetype longestList = 150;

QString elidedList(const QStringList& names) {
    QString list = names.constFirst().first(std::min(names.constFirst().size(), longestList));
    for (qsizetype name = 1; name < names.size(); ++name) {
        if (list.size() + names[name].size() > longestList)
            return list + u", \u2026"_s;
        list += u", "_s + names[name];
    }
    return list;
}

Alert summaryOf(const QStringList& names) {
    return {names.size() == 1 ? u"and 1 more server needs attention"_s
                              : u"and %1 more servers need attention"_s.arg(names.size()),
            elidedList(names),
            {}};
}

} // namespace

void AlertRound::post(const Server& server) {
    bool waits = false;
    for (const Alert& alert : alertsFor(server, *server.metrics, settings_)) {
        if (!collaborators_.claim(alert.key, collaborators_.clock()))
            continue;
        if (posted_ == postedOneByOne) {
            waits = true;
        } else {
            ++posted_;
            collaborators_.notify(alert, settings_.soundAlerts);
        }
    }
    if (waits)
        others_ += server.name;
}

void AlertRound::postOrHold(const Server& server) {
    const bool failed = server.metrics->errorMessage.has_value();
    if (!server.isLocal)
        (failed ? remoteFailed_ : remoteAnswered_) = true;
    if (failed && !server.isLocal && !remoteAnswered_ && !collaborators_.hasDefaultRoute())
        held_ += server;
    else
        post(server);
}

bool AlertRound::end() {
    const bool isOffline = remoteFailed_ && !remoteAnswered_ && !collaborators_.hasDefaultRoute();
    for (const Server& server : std::exchange(held_, {}))
        if (!isOffline)
            post(server);
    if (!others_.isEmpty())
        collaborators_.notify(summaryOf(std::exchange(others_, {})), settings_.soundAlerts);
    return isOffline;
}

} // namespace tarnwick
