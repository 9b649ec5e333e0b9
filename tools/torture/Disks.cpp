// Saving meets a disk that does not take what it is given.

#include "Files.h"
#include "Fleet.h"
#include "Trial.h"

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

namespace {

/// What FaultySystem.cpp is told.
struct Failure {
    QString call;
    int at = 0; ///< 0: none fails, they are only counted
    int error = 0;
    QString on = u"once"_s;
};

void start(Trial& trial, const Failure& failure) {
    trial.subject.start({u"LD_PRELOAD="_s + trial.faultySystem, u"FAILING_FOLDER="_s + trial.subject.dataFolder(),
                         u"FAILING_CALL="_s + failure.call, u"FAILING_AT="_s + QString::number(failure.at),
                         u"FAILING_ERROR="_s + QString::number(failure.error), u"FAILING_ON="_s + failure.on,
                         u"FAILING_COUNT="_s + trial.subject.home() + u"/count"_s});
}

/// How many of these calls a run makes that probes once and quits.
int count(Trial& trial, const QString& call) {
    QFile::remove(trial.subject.home() + u"/count"_s);
    start(trial, {.call = call});
    static_cast<void>(trial.subject.answers(20s));
    static_cast<void>(trial.subject.quits());
    return static_cast<int>(QFileInfo(trial.subject.home() + u"/count"_s).size());
}

/// A run in which that fails.
void fail(Trial& trial, const Failure& failure) {
    const QString which = u"%1 %2, "_s.arg(failure.call).arg(failure.at);
    start(trial, failure);
    trial.expect(trial.subject.printsLine(), which + u"prints nothing"_s);
    if (failure.on == u"once")
        trial.expect(trial.subject.answers(40s), which + u"does not store again"_s);
    trial.expect(trial.subject.quits(), which + u"does not quit well"_s);
}

/// Runs in which each of these calls fails, one after another.
void failEach(Trial& trial, const QStringList& calls, int error, const QString& on) {
    trial.expect(trial.subject.store(Fleet().servers()));
    QList<Failure> failures;
    for (const QString& call : calls)
        for (int at = 1, last = count(trial, call); at <= last; ++at)
            failures << Failure{call, at, error, on};
    trial.repeat(static_cast<int>(failures.size()), [&] { fail(trial, failures[trial.rounds]); });
}

} // namespace

void fullDisk(Trial& trial) {
    failEach(trial, {u"write"_s}, ENOSPC, u"always"_s);
}

void readOnlyFolder(Trial& trial) {
    trial.expect(trial.subject.store(Fleet().servers()));
    const int errors[] = {EROFS, EACCES};
    trial.repeat(2, [&] { fail(trial, {u"any"_s, 1, errors[trial.rounds], u"always"_s}); });
}

void failingCalls(Trial& trial) {
    failEach(trial, {u"open"_s, u"fchmod"_s, u"write"_s, u"fdatasync"_s, u"rename"_s, u"link"_s, u"unlink"_s}, EIO,
             u"once"_s);
}

} // namespace tarnwick
