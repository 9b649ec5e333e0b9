#pragma once

#include "SSHAlias.h"

#include <QFutureWatcher>
#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

#include <functional>

namespace tarnwick {

/// Asks ssh about one host after another, so that a long file costs one process at a time, and remembers its answers.
class AliasMeanings : public QObject {
    Q_OBJECT

public:
    using Ask = std::function<QFuture<SSHAliasMeaning>(const SSHConfigHost&)>;

    AliasMeanings(Ask ask, QObject* parent);

    /// What is known of the host. Asks when nothing is, unless ssh has no name for it.
    [[nodiscard]] SSHAliasMeaning meaning(const SSHConfigHost& host);
    /// Drops all answers and questions, and the answer to come.
    void forget();

Q_SIGNALS:
    /// A while after some answers that say that something is lost.
    void found();

private:
    void askNext();
    void hear();

    const Ask ask_;
    QHash<SSHConfigHost, SSHAliasMeaning> known_; ///< of those asked for, too: nothing yet
    QList<SSHConfigHost> questions_;              ///< the first one is asked, the others wait
    QFutureWatcher<SSHAliasMeaning> answer_;
    QTimer pause_; ///< so that the rows are made anew ten times a second at most
};

} // namespace tarnwick
