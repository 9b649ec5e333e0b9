#include "TerminalStatusItem.h"

#include "ShownText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <utility>

#include <poll.h>
#include <unistd.h>

namespace tarnwick {

namespace {

struct SymbolCharacter {
    QStringView symbolName;
    QStringView character;
};
/// Characters that common fonts have, one column wide where possible.
constexpr std::array symbolCharacters{
    SymbolCharacter{u"exclamationmark.triangle.fill", u"\u26a0"},
    SymbolCharacter{u"thermometer.medium", u"\U0001f321"},
    SymbolCharacter{u"flame.fill", u"\U0001f525"},
    SymbolCharacter{u"internaldrive", u"\u26c1"},
    SymbolCharacter{u"cpu", u"\u2699"},
    SymbolCharacter{u"square.grid.2x2", u"\u229e"},
    SymbolCharacter{u"memorychip", u"\u25a6"},
    SymbolCharacter{u"waveform.path.ecg", u"\u223f"},
};
constexpr QStringView otherSymbol = u"\u25cf";

QByteArray lineOf(const StatusItemContent& content) {
    const auto* known = std::ranges::find(symbolCharacters, content.symbolName, &SymbolCharacter::symbolName);
    const QString symbol = (known == symbolCharacters.end() ? otherSymbol : known->character).toString();
    return (symbol + shownText(content.title)).toUtf8() + '\n';
}

/// Whether a write of PIPE_BUF bytes returns at once, be it with an error.
bool isReady(int descriptor) {
    pollfd state{descriptor, POLLOUT, 0};
    return poll(&state, 1, 0) == 1;
}

/// Polled now and then instead of watched: when a socket's reader has gone, Qt's event loop on GLib never reports it
/// and spins instead.
bool hasReader(int descriptor) {
    pollfd state{descriptor, 0, 0}; // errors and hang-ups are always reported
    return poll(&state, 1, 0) == 0;
}

} // namespace

TerminalStatusItem::TerminalStatusItem(int descriptor, QObject* parent)
    : StatusItem(parent), descriptor_(descriptor), room_(descriptor, QSocketNotifier::Write) {
    std::signal(SIGPIPE, SIG_IGN);
    room_.setEnabled(false);
    connect(&room_, &QSocketNotifier::activated, this, &TerminalStatusItem::write);
}

void TerminalStatusItem::setContent(const StatusItemContent& content) {
    if (!hasReader(descriptor_))
        close();
    const QByteArray line = lineOf(content);
    if (closed_ || line == latest_)
        return;
    latest_ = line;
    (begun_ ? next_ : unsent_) = line;
    write();
}

// Other processes, such as the user's shell, share the descriptor's blocking mode, so it is not changed; poll() is
// asked before each piece instead.
void TerminalStatusItem::write() {
    while (!unsent_.isEmpty() && isReady(descriptor_)) {
        const ssize_t written = ::write(descriptor_, unsent_.constData(),
                                        static_cast<size_t>(std::min<qsizetype>(unsent_.size(), PIPE_BUF)));
        if (written < 0) {
            if (errno == EINTR)
                continue;
            if (errno == EAGAIN)
                break;
            close(errno == EPIPE ? QString() : qt_error_string(errno));
            return;
        }
        unsent_.remove(0, written);
        begun_ = !unsent_.isEmpty();
        if (!begun_)
            unsent_ = std::exchange(next_, {});
    }
    room_.setEnabled(!unsent_.isEmpty());
}

void TerminalStatusItem::close(const QString& problem) {
    if (closed_)
        return;
    closed_ = true;
    unsent_.clear();
    room_.setEnabled(false);
    QMetaObject::invokeMethod(
        this, [this, problem] { Q_EMIT outputClosed(problem); }, Qt::QueuedConnection);
}

} // namespace tarnwick
