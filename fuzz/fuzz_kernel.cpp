// /proc and /sys of a machine that could show anything there. Input: a file as in tests/fixtures/machines, of which
// each question is a look at the machine, a minute after the last.

#include "Fuzz.h"
#include "SSHMetricsCollector.h"
#include "ThisComputer.h"
#include "linux/LinuxKernelReadings.h"
#include "linux/LinuxTemperatureSensors.h"
#include "linux/LinuxWords.h"

#include <QDir>
#include <QTemporaryDir>

#include <atomic>
#include <cmath>
#include <filesystem>
#include <fstream>

using namespace tarnwick;
using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

constexpr int mostLines = 100;
constexpr int longestRange = 16;
constexpr qsizetype longestPath = 200;

/// A folder in place of the root. Nothing is written outside of it, whatever an input says.
class Tree {
public:
    void install(const QByteArray& line) {
        if (line.startsWith("remove "))
            return remove(line.sliced(7));
        const bool isLink = line.contains(" -> ");
        const QByteArrayView mark = isLink ? " -> " : " = ";
        const qsizetype at = line.indexOf(mark);
        if (at < 0 || line.startsWith('#'))
            return;
        const QByteArray path = line.first(at);
        QByteArray content = line.sliced(at + mark.size());
        if (isLink)
            return link(path, content);
        content.replace("\\n", "\n").replace("\\t", "\t").replace("\\0", QByteArray(1, '\0'));
        // "[A-B]"
        const qsizetype begin = path.indexOf('[');
        const qsizetype end = path.indexOf(']', begin);
        if (begin < 0 || end < 0)
            return write(path, content + '\n');
        const QByteArrayList ends = path.sliced(begin + 1, end - begin - 1).split('-');
        const qint64 first = ends.first().toInt();
        for (qint64 number = first; number <= std::min(ends.last().toLongLong(), first + longestRange); ++number) {
            const QByteArray digits = QByteArray::number(number);
            write(path.first(begin) + digits + path.sliced(end + 1), QByteArray(content).replace("{}", digits) + '\n');
        }
    }

    void clear() {
        links_.clear();
        for (const fs::directory_entry& entry : fs::directory_iterator(root_))
            fs::remove_all(entry);
    }

    [[nodiscard]] QString root() const { return folder_.path(); }

private:
    /// The place of a path in the folder; empty when it is outside, or behind a link, which may lead outside.
    [[nodiscard]] fs::path place(const QByteArray& path) const {
        const QString text = QString::fromLatin1(path);
        const bool isInside = !path.isEmpty() && path.size() <= longestPath && !path.contains('\0') &&
                              QDir::cleanPath(text) == text && !path.startsWith('/') && !path.startsWith('.');
        const bool isBehindLink =
            std::ranges::any_of(links_, [&](const QByteArray& link) { return (path + '/').startsWith(link + '/'); });
        return isInside && !isBehindLink ? root_ / path.toStdString() : fs::path();
    }

    void write(const QByteArray& path, const QByteArray& content) const {
        std::error_code error;
        if (const fs::path file = place(path); !file.empty()) {
            fs::create_directories(file.parent_path(), error);
            std::ofstream(file).write(content.constData(), content.size());
        }
    }

    void link(const QByteArray& path, const QByteArray& target) {
        std::error_code error;
        if (const fs::path file = place(path); !file.empty() && !target.contains('\0') && !target.startsWith('/')) {
            fs::create_directories(file.parent_path(), error);
            fs::create_symlink(target.toStdString(), file, error);
            links_.append(path);
        }
    }

    void remove(const QByteArray& path) const {
        std::error_code error;
        if (const fs::path folder = place(path); !folder.empty())
            fs::remove_all(folder, error);
    }

    const QTemporaryDir folder_;
    const fs::path root_ = folder_.path().toStdString();
    QByteArrayList links_;
};

struct Machine {
    std::atomic<std::chrono::seconds> now{};
    const DeviceAccess access{
        .clock = [this] { return now.load(); },
        .patience = std::chrono::minutes(1),
        .grace = {},
    };
    LinuxKernelReadings kernel;
    LinuxTemperatureSensors sensors;
    ThisComputer computer{kernel, sensors, linuxWords, access.clock};

    explicit Machine(const QString& root) : kernel(root, {}, access), sensors(root, access) {}

    void look() {
        now = now.load() + std::chrono::minutes(1);
        const MacHardwareInfo info = computer.info();
        const auto isPercent = [](double figure) {
            return figure >= 0 && figure <= 100;
        };
        require(isPercent(info.cpuUsagePercent), "the processor's load is 0 to 100 %");
        require(isPercent(info.gpuUsagePercent.value_or(0)), "the graphics card's load is 0 to 100 %");
        require(isPercent(info.ramUsagePercent), "the memory's load is 0 to 100 %");
        require(info.ramUsedGB >= 0 && info.ramUsedGB <= info.ramTotalGB, "no more memory is used than there is");
        require(!info.memoryString.startsWith(u'-'), "there is no less memory than none");
        require(!info.uptimeString.contains(u'-'), "the computer was started in the past");
        require(info.avgSocTemp <= info.peakSocTemp, "the mean temperature is not above the highest");
        for (const MacThermalSensor& sensor : info.sensors)
            require(sensor.tempCelsius > 15 && sensor.tempCelsius < 125, "a temperature is plausible");
        const QString script = SSHMetricsCollector::localProbeRequest(computer.figures().result()).arguments.last();
        require(!script.contains(u" nan"_s) && !script.contains(u" inf"_s), "the local probe gets figures");
    }
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Tree tree;
    tree.clear();
    std::optional<Machine> machine;
    const auto look = [&machine] {
        if (!machine)
            machine.emplace(tree.root());
        machine->look();
    };
    bool isChanged = false;
    for (const QByteArray& line : bytesOf(data, size).split('\n').mid(0, mostLines)) {
        const bool isQuestion = line.contains('?') && !line.contains('=');
        if (isQuestion && std::exchange(isChanged, false))
            look();
        if (!isQuestion) {
            tree.install(line);
            isChanged = true;
        }
    }
    look();
    return 0;
}
