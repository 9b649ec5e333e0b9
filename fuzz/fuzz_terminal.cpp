// Names, hosts, users, keys and containers in the command lines of terminals and of restarts, with /bin/sh as the
// judge: each must arrive whole where it belongs, and nothing else may run. Input: name, host, user, key, container's
// name and id, with 0xFF between them.

#include "Fuzz.h"
#include "SSHMetricsCollector.h"
#include "TerminalLauncher.h"

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

/// A `docker` that prints its arguments, and an `ssh` that prints its options, its target and how many words of a
/// remote command it got, a NUL after each. It then runs that command, as the shell of a login does.
const QByteArray standIns = R"sh(
docker() { printf '%s\0' docker "$@"; }
ssh() {
    printf '%s\0' ssh
    OPTIND=1
    while getopts ti:p: option; do
        case $option in
        t) printf '%s\0' -t ;;
        *) printf '%s\0' "-$option" "$OPTARG" ;;
        esac
    done
    shift $((OPTIND - 1))
    printf '%s\0' "$1" "$#"
    shift
    [ $# -eq 0 ] || (eval "$*")
}
)sh";

/// What /bin/sh prints, on both of its outputs, when it runs the script.
QByteArray printedBy(const QByteArray& script) {
    static const int output = ::memfd_create("output", MFD_CLOEXEC);
    static const auto actions = [] {
        posix_spawn_file_actions_t files;
        ::posix_spawn_file_actions_init(&files);
        ::posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&files, output, STDERR_FILENO);
        return files;
    }();
    std::array<std::string, 3> arguments{"sh", "-c", script.toStdString()};
    std::array<char*, 4> argv{arguments[0].data(), arguments[1].data(), arguments[2].data(), nullptr};
    std::string path = "PATH=/nonexistent"; // a command that gets out says that it is not found
    std::array<char*, 2> environment{path.data(), nullptr};
    pid_t child = 0;
    const bool ran = ::ftruncate(output, 0) == 0 && ::lseek(output, 0, SEEK_SET) == 0 &&
                     ::posix_spawn(&child, "/bin/sh", &actions, nullptr, argv.data(), environment.data()) == 0;
    require(ran, "a shell can be started");
    while (::waitpid(child, nullptr, 0) < 0) // libFuzzer's alarm interrupts it
        require(errno == EINTR, "a shell can be waited for");
    QByteArray printed(::lseek(output, 0, SEEK_END), '\0');
    require(::pread(output, printed.data(), static_cast<std::size_t>(printed.size()), 0) == printed.size(),
            "what it printed can be read");
    return printed;
}

QByteArray words(const QStringList& arguments) {
    return arguments.join(QChar::Null).toUtf8() + '\0';
}

/// As it is seen: no control characters.
QString seen(QString text) {
    for (QChar& c : text)
        c = c.category() == QChar::Other_Control ? QChar(u'?') : c;
    return text;
}

QStringList operand(const QString& text) {
    return text.startsWith(u'-') ? QStringList{u"--"_s, text} : QStringList{text};
}

QByteArray escaped(QByteArray text) {
    return text.replace('\0', "\\0").replace('\n', "\\n");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QStringList texts;
    for (const QByteArray& field : fieldsOf(data, size, 6))
        texts << QString::fromUtf8(field);
    Server remote;
    remote.name = texts[0];
    remote.host = texts[1];
    remote.user = texts[2];
    remote.customSshKeyPath = texts[3];
    Server local = remote;
    local.isLocal = true;
    ContainerInfo container;
    container.name = texts[4];
    container.id = texts[5];
    for (QString& text : texts)
        text = seen(text);

    const QString enter = u"if command -v bash >/dev/null 2>&1; then exec bash; else exec sh; fi"_s;
    const QString target = texts[4].isEmpty() ? texts[5] : texts[4];
    const QByteArray exec =
        words(QStringList{u"docker"_s, u"exec"_s, u"-it"_s} + operand(target) + QStringList{u"sh"_s, u"-c"_s, enter});
    const QByteArray logs = words(QStringList{u"docker"_s, u"logs"_s, u"--tail"_s, u"200"_s} + operand(target));
    const QByteArray stop = words(QStringList{u"docker"_s, u"stop"_s} + operand(texts[5]));
    const QStringList login{u"-i"_s, texts[3], u"-p"_s, u"22"_s, texts[2] + u'@' + texts[1]};
    const auto greeting = [](const QString& text, const QString& act = u"Connecting to "_s) {
        return (u"Tarnwick: "_s + act + text + u"...\n"_s).toUtf8();
    };
    const QString reading = u"Last 200 log lines of "_s;
    const QString there = u"container ["_s + target + u']';

    using namespace TerminalLauncher;
    QByteArray script = standIns;
    for (const QString& line :
         {serverCommandLine(remote), containerCommandLine(local, container), containerCommandLine(remote, container),
          containerLogCommandLine(local, container), containerLogCommandLine(remote, container)}) {
        require(!hasControls(line), "a line has no characters that act as keys");
        script += line.toUtf8() + '\n';
    }
    for (const Server& server : {remote, local})
        script +=
            SSHMetricsCollector::actionRequest(server, container.id, ContainerAction::stop).arguments.last().toUtf8() +
            '\n';
    const QByteArray expected = greeting(texts[0]) + words(QStringList{u"ssh"_s} + login + QStringList{u"1"_s}) + //
                                greeting(there) + exec +                                                          //
                                greeting(there + u" on "_s + texts[0]) +
                                words(QStringList{u"ssh"_s, u"-t"_s} + login + QStringList{u"2"_s}) + exec + //
                                greeting(there, reading) + logs +                                            //
                                greeting(there + u" on "_s + texts[0], reading) +
                                words(QStringList{u"ssh"_s} + login + QStringList{u"2"_s}) + logs + //
                                stop + stop;
    const QByteArray printed = printedBy(script);
    if (printed != expected)
        std::fprintf(stderr, "Expected: %s\nPrinted:  %s\n", escaped(expected).constData(),
                     escaped(printed).constData());
    require(printed == expected, "every value arrives whole where it belongs, and nothing else runs");
    return 0;
}
