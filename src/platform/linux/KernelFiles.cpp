#include "KernelFiles.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

#include <sys/utsname.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

QByteArray readSmallFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

QByteArrayView restOfLine(QByteArrayView text, QByteArrayView key) {
    while (!text.startsWith(key)) {
        const qsizetype lineEnd = text.indexOf('\n');
        if (lineEnd < 0)
            return {};
        text = text.sliced(lineEnd + 1);
    }
    const qsizetype lineEnd = text.indexOf('\n');
    return (lineEnd < 0 ? text : text.first(lineEnd)).sliced(key.size()).trimmed();
}

QString assignedValue(QByteArrayView text, QByteArrayView key) {
    QByteArrayView line = restOfLine(text, key);
    if (line.size() >= 2 && (line.front() == '"' || line.front() == '\'') && line.back() == line.front())
        line = line.sliced(1, line.size() - 2);
    static const QRegularExpression escaped(u"\\\\([\"$`\\\\])"_s);
    return QString::fromUtf8(line).replace(escaped, u"\\1"_s);
}

std::optional<quint64> takeNumber(QByteArrayView& text) {
    text = text.trimmed();
    const auto end = std::find_if(text.begin(), text.end(), [](char c) { return c < '0' || c > '9'; });
    bool isNumber = false;
    const quint64 number = text.first(end - text.begin()).toULongLong(&isNumber);
    text = text.sliced(end - text.begin());
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<quint64> numberAfter(QByteArrayView text, QByteArrayView key) {
    QByteArrayView rest = restOfLine(text, key);
    return takeNumber(rest);
}

QByteArrayList deviceTreeTexts(const QString& root, const QString& property) {
    QByteArrayList texts = readSmallFile(root + u"proc/device-tree/"_s + property).split('\0'); // each ends in a NUL
    texts.removeAll(QByteArray());
    return texts;
}

QByteArray architecture(const QString& root) {
    const QByteArray told = readSmallFile(root + u"proc/sys/kernel/arch"_s); // a kernel before 6.1 has none
    utsname here{};
    return told.isEmpty() && ::uname(&here) == 0 ? QByteArray(here.machine) : told;
}

QStringList foldersByNumber(const QString& folder, const QString& pattern) {
    QStringList entries = QDir(folder).entryList({pattern}, QDir::Dirs);
    std::sort(entries.begin(), entries.end(),
              [](const QString& a, const QString& b) { return a.size() == b.size() ? a < b : a.size() < b.size(); });
    return entries;
}

} // namespace tarnwick
