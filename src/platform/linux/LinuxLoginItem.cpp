#include "LinuxLoginItem.h"

#include "LoginItem.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

#include <utility>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

const auto entryName = u"autostart/tarnwick.desktop"_s;
const QByteArray group = "[Desktop Entry]";
const QByteArray hidden = "Hidden=true";

QString userEntry() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' + entryName;
}

bool write(const QString& path, const QByteArray& entry) {
    QSaveFile file(path);
    return QDir().mkpath(path.section(u'/', 0, -2)) && file.open(QIODevice::WriteOnly) &&
           file.write(entry) == entry.size() && file.flush() && file.commit(); // commit() overlooks a full disk
}

} // namespace

QByteArray autostartEntry(const QString& executable) {
    // A quoted argument, and that as a string value, each with its own backslashes; "%" would begin a field code.
    QString command = executable;
    for (const auto& [character, replacement] : {std::pair(u"\\"_s, u"\\\\\\\\"_s),
                                                 {u"\""_s, u"\\\\\""_s},
                                                 {u"`"_s, u"\\\\`"_s},
                                                 {u"$"_s, u"\\\\$"_s},
                                                 {u"%"_s, u"%%"_s},
                                                 {u"\n"_s, u"\\n"_s},
                                                 {u"\t"_s, u"\\t"_s},
                                                 {u"\r"_s, u"\\r"_s}})
        command.replace(character, replacement);
    // GLib looks for the program before it undoes "%%", and leaves out the entry of one that is not there.
    const QByteArray launcher = executable.contains(u'%') ? "env " : "";
    return group + "\nType=Application\nName=Tarnwick\nIcon=tarnwick\nExec=" + launcher + '"' + command.toUtf8() +
           "\"\nTerminal=false\nStartupNotify=false\n";
}

bool isAutostarted(const QByteArray& entry) {
    QByteArray currentGroup;
    for (const QByteArray& untrimmed : entry.split('\n')) {
        const QByteArray line = untrimmed.simplified().replace(" =", "=").replace("= ", "=");
        if (line.startsWith('['))
            currentGroup = line;
        // GNOME's own switch writes the second one.
        if (currentGroup == group && (line == hidden || line == "X-GNOME-Autostart-enabled=false"))
            return false;
    }
    return entry.contains(group);
}

bool LoginItem::isEnabled() {
    // The user's entry hides one that the administrator made for all.
    QFile entry(QStandardPaths::locate(QStandardPaths::GenericConfigLocation, entryName));
    return !entry.fileName().isEmpty() && entry.open(QIODevice::ReadOnly) && isAutostarted(entry.readAll());
}

void LoginItem::setEnabled(bool enabled) {
    if (enabled) {
        write(userEntry(), autostartEntry(QCoreApplication::applicationFilePath()));
        return;
    }
    QFile::remove(userEntry());
    if (isEnabled())
        write(userEntry(), group + '\n' + hidden + '\n');
}

} // namespace tarnwick
