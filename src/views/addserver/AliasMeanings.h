#pragma once

#include "SSHAlias.h"

#include <QFutureWatcher>
#include <QHash>
#include <QList>
#include <QObject>

#include <functional>
#include <optional>

namespace tarnwick {

/// Asks ssh about one host after another, so that there is one process at a time, and remembers its answers.
class AliasMeanings : public QObject {
    Q_OBJECT

public:
    using Ask = std::function<QFuture<SSHAliasMeaning>(const SSHConfigHost&)>;

    AliasMeanings(Ask ask, QObject* parent);

    /// Asks about the host, before all that wait, unless that was done or ssh has no name for it.
    void want(const SSHConfigHost& host);
    /// Nothing is lost while there is no answer.
    [[nodiscard]] SSHAliasMeaning meaning(const SSHConfigHost& host) const { return known_.value(host); }
    /// Drops all answers and questions, and the answer to come.
    void forget();

Q_SIGNALS:
    void found(const tarnwick::SSHConfigHost& host);

private:
    void askNext();
    void hear();

    const Ask ask_;
    QHash<SSHConfigHost, SSHAliasMeaning> known_; ///< of those asked for, too: nothing yet
    QList<SSHConfigHost> waiting_;                ///< the last one is asked next
    std::optional<SSHConfigHost> asked_;
    QFutureWatcher<SSHAliasMeaning> answer_;
};

} // namespace tarnwick
