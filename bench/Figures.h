#pragma once

#include <QFile>
#include <QString>

#include <chrono>
#include <cstdio>
#include <ctime>

/// How the benchmarks measure and print.
namespace figures {

/// Processor time of this process, user and system, children excluded; or of this thread alone.
inline double cpuMilliseconds(clockid_t clock = CLOCK_PROCESS_CPUTIME_ID) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

inline double wallMilliseconds() {
    using namespace std::chrono;
    return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

/// One line of /proc/PID/status, such as "VmRSS" or "RssAnon", in MB of 10^6 bytes; negative when there is none.
inline double statusMegabytes(const QByteArray& field, const QString& process = QStringLiteral("self")) {
    QFile file(QStringLiteral("/proc/%1/status").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith(field + ':'))
            return line.mid(field.size() + 1).trimmed().split(' ').first().toDouble() * 1024 / 1e6;
    return -1;
}

inline bool allWithin = true;

/// Prints one figure beside its limit; a figure over its limit fails the benchmark.
inline void report(const char* name, double value, const char* unit, double limit, const QString& beside = {}) {
    const bool within = value <= limit;
    allWithin = allWithin && within;
    std::printf("%-58s %9.2f %-5s limit %8.2f  %s%s%s\n", name, value, unit, limit, within ? "ok" : "OVER",
                beside.isEmpty() ? "" : "   ", qPrintable(beside));
    std::fflush(stdout);
}

inline int exitStatus() {
    return allWithin ? 0 : 1;
}

} // namespace figures
