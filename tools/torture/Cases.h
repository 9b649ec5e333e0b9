#pragma once

#include <QString>
#include <QStringList>

#include <chrono>

namespace tarnwick {

class Subject;

/// What came of one kind of trouble.
struct CaseResult {
    int rounds = 0;
    QStringList failures; ///< a line for each thing that went wrong

    /// Counts a failure unless `reason` is empty.
    void expect(const QString& reason);
    void expect(bool good, const QString& reason) { expect(good ? QString() : reason); }
    /// After each trouble: the files decode, and no child is left.
    void expectWhole(const Subject& subject);
    /// The program still probes and stores, its files decode, it quits within two seconds, and leaves no child.
    void expectWell(Subject& subject, std::chrono::seconds limit = std::chrono::seconds(60));
};

/// What all cases are given.
struct Trouble {
    QString executable;   ///< the program
    QString failingCalls; ///< the library that makes system calls fail
    int percent = 100;    ///< of the rounds that each case has
    [[nodiscard]] int rounds(int all) const { return qMax(1, all * percent / 100); }
};

CaseResult killedWhileItSaves(const Trouble& trouble);
CaseResult killedWhileItQuits(const Trouble& trouble);
CaseResult killedDuringADrag(const Trouble& trouble);
CaseResult fullDisk(const Trouble& trouble);
CaseResult readOnlyFolder(const Trouble& trouble);
CaseResult failingCalls(const Trouble& trouble);
CaseResult brokenFleet(const Trouble& trouble);
CaseResult lostBusAndTray(const Trouble& trouble);
CaseResult changedClock(const Trouble& trouble);
CaseResult longSleep(const Trouble& trouble);

} // namespace tarnwick
