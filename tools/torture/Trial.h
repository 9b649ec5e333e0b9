#pragma once

#include "Subject.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <utility>

namespace tarnwick {

/// The program in one kind of trouble, and what came of it.
class Trial {
public:
    /// `percent` of all rounds are run. `library` is the one of FaultySystem.cpp.
    Trial(QString executable, QString library, int percent)
        : subject(std::move(executable)), faultySystem(std::move(library)), percent_(percent) {}

    Subject subject;
    const QString faultySystem;
    int rounds = 0;
    QStringList failures; ///< a line for each thing that went wrong

    /// Counts a failure unless `reason` is empty.
    void expect(const QString& reason);
    void expect(bool good, const QString& reason) { expect(good ? QString() : reason); }
    /// After each trouble: the files decode, and no child is left.
    void expectWhole();
    /// The program still probes and stores, its files decode, it quits within two seconds, and leaves no child. A cycle
    /// may last 30 s, and so does a lock that was made right before a kill, without its owner's number.
    void expectWell(std::chrono::seconds limit = std::chrono::seconds(120));

    /// How many rounds are run of so many.
    [[nodiscard]] int part(int all) const { return qMax(1, all * percent_ / 100); }
    /// Makes the trouble in that many rounds, until too much has gone wrong to go on. In the end the program, started
    /// once more, is well.
    template <typename Round>
    void repeat(int all, Round round) {
        for (const int last = part(all); rounds < last && failures.size() < longestReport; ++rounds) {
            round();
            expectWhole();
        }
        subject.start();
        expectWell();
    }

    static constexpr int longestReport = 10; ///< failures

private:
    int percent_;
};

void killedWhileItSaves(Trial& trial);
void killedWhileItQuits(Trial& trial);
void killedDuringADrag(Trial& trial);
void fullDisk(Trial& trial);
void readOnlyFolder(Trial& trial);
void failingCalls(Trial& trial);
void brokenFleet(Trial& trial);
void lostBusAndTray(Trial& trial);
void changedClock(Trial& trial);
void longSleep(Trial& trial);

} // namespace tarnwick
