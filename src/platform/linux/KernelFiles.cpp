#include "KernelFiles.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

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

QStringList foldersByNumber(const QString& folder, const QString& pattern) {
    QStringList entries = QDir(folder).entryList({pattern}, QDir::Dirs);
    std::sort(entries.begin(), entries.end(),
              [](const QString& a, const QString& b) { return a.size() == b.size() ? a < b : a.size() < b.size(); });
    return entries;
}

} // namespace tarnwick
