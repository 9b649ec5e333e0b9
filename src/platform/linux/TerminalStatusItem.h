#pragma once

#include "StatusItem.h"

#include <QByteArray>
#include <QSocketNotifier>

namespace tarnwick {

/// The status item without a desktop: each changed content is one line of UTF-8 on standard output, the symbol as a
/// character and then the title, as text status bars and people on a terminal read it. Never clicked. Each content is
/// also the moment at which it notices that nobody reads the output any more; from then on it writes nothing.
///
/// It never waits for a slow reader: a line that could not go out before the next one came is replaced by it, but a
/// line that has begun is completed. From construction on, SIGPIPE is ignored.
class TerminalStatusItem : public StatusItem {
    Q_OBJECT

public:
    /// `descriptor` is written to and stays the caller's.
    explicit TerminalStatusItem(int descriptor = 1, QObject* parent = nullptr);

    void setContent(const StatusItemContent& content) override;

private:
    void write();
    void close();

    const int descriptor_;
    bool closed_ = false;
    QByteArray latest_;  ///< the line of the content that is to be shown
    QByteArray unsent_;  ///< what is left of the line on its way
    bool begun_ = false; ///< a part of that line is out
    QByteArray next_;    ///< the line to follow a begun one
    QSocketNotifier room_;
};

} // namespace tarnwick
