#pragma once

#include "Files.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace tarnwick {

using namespace Qt::StringLiterals;

/// A folder in place of the root of a computer, filled with captured files of /proc and /sys.
class FileTree {
public:
    [[nodiscard]] QString root() const { return folder_.path(); }

    /// Writes a file in place, so that one that is open shows the new content.
    void write(const QString& path, const QByteArray& content) const {
        if (!writeFile(full(path), content))
            qFatal("cannot write %s", qPrintable(full(path)));
    }

    /// Folders with their files, one folder a line: "FOLDER|FILE CONTENT|FILE CONTENT". A FILE may have folders.
    void install(const QString& lines) const {
        for (const QString& line : lines.split(u'\n', Qt::SkipEmptyParts)) {
            const QStringList parts = line.split(u'|');
            for (const QString& file : parts.sliced(1))
                write(parts.first() + u'/' + file.section(u' ', 0, 0), file.section(u' ', 1).toLatin1() + '\n');
        }
    }

    /// A line of a file in fixtures/machines, in the form that README.md there describes.
    void installLine(const QString& line) const {
        static const QRegularExpression range(u"\\[(\\d+)-(\\d+)\\]"_s);
        const bool isLink = line.contains(u" -> "_s);
        const QString path = line.section(isLink ? u" -> "_s : u" = "_s, 0, 0);
        QString content = line.section(isLink ? u" -> "_s : u" = "_s, 1);
        if (line.isEmpty() || line.startsWith(u'#'))
            return;
        if (isLink)
            return link(path, content);
        content.replace(u"\\n"_s, u"\n"_s).replace(u"\\t"_s, u"\t"_s).replace(u"\\0"_s, QString(QChar(0)));
        const QRegularExpressionMatch match = range.match(path);
        for (int number = match.captured(1).toInt(); number <= match.captured(2).toInt(); ++number) {
            const QString digits = QString::number(number);
            write(QString(path).replace(range, digits), QString(content).replace(u"{}"_s, digits).toUtf8() + '\n');
        }
    }

    void link(const QString& path, const QString& target) const {
        QDir().mkpath(QFileInfo(full(path)).path());
        if (!QFile::link(target, full(path)))
            qFatal("cannot link %s", qPrintable(full(path)));
    }

    /// Removes a folder. Its files are emptied first, so that those that are still open have no content, as with a
    /// device that is gone.
    void remove(const QString& path) const {
        QDir folder(full(path));
        for (const QString& file : folder.entryList(QDir::Files))
            QFile::resize(folder.filePath(file), 0);
        folder.removeRecursively();
    }

    [[nodiscard]] QString full(const QString& path) const { return folder_.filePath(path); }

private:
    QTemporaryDir folder_;
};

} // namespace tarnwick
