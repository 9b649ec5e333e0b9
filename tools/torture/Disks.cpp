// Saving meets a disk that does not take what it is given.

#include "Cases.h"
#include "Files.h"
#include "Fleet.h"
#include "Subject.h"

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

namespace {

/// What FailingCalls.cpp is told.
struct Failure {
    QString call;
    int at = 0; ///< 0: none fails, they are only counted
    int error = 0;
    QString on = u"once"_s;
};

QStringList variables(const Trouble& trouble, const Subject& subject, const Failure& failure) {
    return {u"LD_PRELOAD="_s + trouble.failingCalls,
            u"FAILING_FOLDER="_s + subject.dataFolder(),
            u"FAILING_CALL="_s + failure.call,
            u"FAILING_AT="_s + QString::number(failure.at),
            u"FAILING_ERROR="_s + QString::number(failure.error),
            u"FAILING_ON="_s + failure.on,
            u"FAILING_COUNT="_s + subject.home() + u"/count"_s};
}

/// How many of these calls a run makes that probes once and quits.
int count(const Trouble& trouble, Subject& subject, const QString& call) {
    QFile::remove(subject.home() + u"/count"_s);
    subject.start(variables(trouble, subject, {.call = call}));
    static_cast<void>(subject.answers(20s));
    static_cast<void>(subject.quits());
    return static_cast<int>(QFileInfo(subject.home() + u"/count"_s).size());
}

/// A run in which that fails, then one in which nothing does.
void fail(CaseResult& result, const Trouble& trouble, Subject& subject, const Failure& failure) {
    const QString which = u"%1 %2, "_s.arg(failure.call).arg(failure.at);
    subject.start(variables(trouble, subject, failure));
    result.expect(subject.printsLine(), which + u"prints nothing"_s);
    if (failure.on == u"once")
        result.expect(subject.answers(40s), which + u"does not store again"_s);
    result.expect(subject.quits(), which + u"does not quit well"_s);
    result.expectWhole(subject);
    ++result.rounds;
}

CaseResult run(const Trouble& trouble, const QStringList& calls, int error, const QString& on) {
    CaseResult result;
    Subject subject(trouble.executable);
    result.expect(subject.store(Fleet().servers(), 10), u"cannot store"_s);
    for (const QString& call : calls)
        for (int at = 1, last = trouble.rounds(count(trouble, subject, call)); at <= last; ++at)
            fail(result, trouble, subject, {call, at, error, on});
    subject.start();
    result.expectWell(subject);
    return result;
}

} // namespace

CaseResult fullDisk(const Trouble& trouble) {
    return run(trouble, {u"write"_s}, ENOSPC, u"always"_s);
}

CaseResult readOnlyFolder(const Trouble& trouble) {
    CaseResult result;
    Subject subject(trouble.executable);
    result.expect(subject.store(Fleet().servers(), 10), u"cannot store"_s);
    for (const int error : {EROFS, EACCES})
        fail(result, trouble, subject, {u"any"_s, 1, error, u"always"_s});
    subject.start();
    result.expectWell(subject);
    return result;
}

CaseResult failingCalls(const Trouble& trouble) {
    return run(trouble, {u"open"_s, u"fchmod"_s, u"write"_s, u"fdatasync"_s, u"rename"_s, u"link"_s, u"unlink"_s}, EIO,
               u"once"_s);
}

} // namespace tarnwick
