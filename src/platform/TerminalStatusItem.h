#pragma once

#include "StatusItem.h"

#include <QByteArray>
#include <QSocketNotifier>

namespace tarnwick {

/// The status item without a desktop: each changed content is one line of UTF-8 on standard output, the symbol as a
/// character and then the title, for text status bars and people on a terminal. It is never clicked. At each content it
/// checks whether the output still has a reader; without one it writes nothing more.
///
/// It never waits for a slow reader: a new line replaces one that has not gone out yet, but a line that is partly out
/// is completed. From construction on, SIGPIPE is ignored.
class TerminalStatusItem : public StatusItem {
    Q_OBJECT

public:
    /// Writes to `descriptor`, and does not close it.
    explicit TerminalStatusItem(int descriptor = 1, QObject* parent = nullptr);

    void setContent(const StatusItemContent& content) override;

private:
    void write();
    void close(const QString& problem = {});

    const int descriptor_;
    bool closed_ = false;
    QByteArray latest_;  ///< the line of the latest content
    QByteArray unsent_;  ///< the rest of the line that is being written
    bool begun_ = false; ///< a part of that line has been written
    QByteArray next_;    ///< the line to write after it
    QSocketNotifier room_;
};

} // namespace tarnwick
