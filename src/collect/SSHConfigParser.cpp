#include "SSHConfigParser.h"

#include "TildeExpansion.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

bool isLineBreak(QChar c) {
    return (c >= u'\n' && c <= u'\r') || c == QChar(0x85) || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
}

bool isBlank(QChar c) {
    return c == u' ' || c == u'\t';
}

/// Calls `apply` with each line's keyword, in lower case, and its value.
template <typename Apply>
void readLines(QStringView text, Apply apply) {
    const auto isSeparator = [](QChar c) {
        return c.isSpace() || c == u'=';
    };
    for (auto begin = text.begin(); begin != text.end();) {
        const auto end = std::find_if(begin, text.end(), isLineBreak);
        const QStringView line = SSHConfigParser::withoutBlanks(QStringView(begin, end));
        begin = end == text.end() ? end : end + 1;
        const qsizetype separator = std::find_if(line.begin(), line.end(), isSeparator) - line.begin();
        if (!line.startsWith(u'#') && separator + 1 < line.size())
            apply(line.first(separator).toString().toLower(),
                  SSHConfigParser::withoutBlanks(line.sliced(separator + 1)));
    }
}

/// The text of the user's file; empty where it is missing, unreadable or not UTF-8.
QString userConfig() {
    QFile file(expandingTilde(u"~/.ssh/config"_s));
    // Only a regular file: opening a pipe would block until somebody writes to it.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : QString();
}

/// The blocks that are complete, and the one that is being read.
class HostBlocks {
public:
    explicit HostBlocks(QString homeFolder) : homeFolder_(std::move(homeFolder)) {}

    void apply(const QString& keyword, QStringView value) {
        if (keyword == "host"_L1) {
            close();
            current_ = SSHConfigHost{.alias = value.toString(), .hostname = {}, .user = u"root"_s, .identityFile = {}};
        } else if (!current_) {
            return; // lines before the first Host are for all hosts, not for one
        } else if (keyword == "hostname"_L1) {
            current_->hostname = value.toString();
        } else if (keyword == "user"_L1) {
            current_->user = value.toString();
        } else if (keyword == "port"_L1) {
            current_->port = SSHConfigParser::port(value);
        } else if (keyword == "identityfile"_L1) {
            current_->identityFile = expandingTilde(value.toString(), homeFolder_);
        }
    }

    QList<SSHConfigHost> take() {
        close();
        return std::exchange(hosts_, {});
    }

private:
    void close() {
        if (!current_ || current_->alias.contains(u'*')) // a pattern is no server
            return;
        if (current_->hostname.isEmpty())
            current_->hostname = current_->alias;
        hosts_.append(*std::exchange(current_, std::nullopt));
    }

    QString homeFolder_;
    QList<SSHConfigHost> hosts_;
    std::optional<SSHConfigHost> current_;
};

} // namespace

Server SSHConfigParser::newServer(const SSHConfigHost& host) {
    Server server;
    server.id = QUuid::createUuid();
    server.name = host.alias;
    server.host = host.hostname;
    server.user = host.user;
    server.port = host.port;
    server.customSshKeyPath = host.identityFile;
    return server;
}

QStringView SSHConfigParser::withoutBlanks(QStringView text) {
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

qint64 SSHConfigParser::port(QStringView text) {
    const bool isSigned = text.startsWith(u'+') || text.startsWith(u'-');
    const QStringView digits = text.sliced(isSigned ? 1 : 0);
    bool fits = std::all_of(digits.begin(), digits.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    const qint64 port = fits ? text.toLongLong(&fits) : 0;
    return fits ? port : 22;
}

QList<SSHConfigHost> SSHConfigParser::parse(QStringView text, const QString& homeFolder) {
    HostBlocks blocks(homeFolder);
    readLines(text, [&blocks](const QString& keyword, QStringView value) { blocks.apply(keyword, value); });
    return blocks.take();
}

QList<SSHConfigHost> SSHConfigParser::parseUserConfig() {
    return parse(userConfig(), QDir::homePath());
}

bool SSHConfigParser::includes(QStringView text) {
    bool isIncluding = false;
    readLines(text, [&isIncluding](const QString& keyword, QStringView) { isIncluding |= keyword == "include"_L1; });
    return isIncluding;
}

bool SSHConfigParser::userConfigIncludes() {
    return includes(userConfig());
}

} // namespace tarnwick
