#pragma once

#include "Files.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

namespace tarnwick {

using namespace Qt::StringLiterals;

/// Installs the lines in their order, and asks their questions. Returns the lines with the answers that it got.
[[nodiscard]] inline QStringList playLines(QStringList lines, const std::function<void(const QString&)>& install,
                                           const std::function<QString(const QString&)>& answer) {
    static const QRegularExpression form(u"^(soon )?([^=>?#]+)\\? ?(.*)$"_s);
    for (QString& line : lines) {
        const QRegularExpressionMatch match = form.match(line);
        if (!match.hasMatch()) {
            install(line);
            continue;
        }
        QString given = answer(match.captured(2));
        if (match.hasCaptured(1) && given != match.captured(3))
            (void)QTest::qWaitFor([&] { return (given = answer(match.captured(2))) == match.captured(3); });
        line = (line.first(match.capturedEnd(2)) + u"? "_s + given).trimmed();
    }
    return lines;
}

/// A folder in place of the root of a computer, filled with captured files of /proc and /sys.
class FileTree {
public:
    [[nodiscard]] QString root() const { return folder_.path(); }

    /// Writes a file in place, so that one that is open shows the new content.
    void write(const QString& path, const QByteArray& content) const {
        if (!writeFile(full(path), content))
            qFatal("cannot write %s", qPrintable(full(path)));
    }

    /// A line of a file in fixtures/machines that is no question, in the form that README.md there describes.
    void install(const QString& line) const {
        static const QRegularExpression range(u"\\[(\\d+)-(\\d+)\\]"_s);
        const bool isLink = line.contains(u" -> "_s);
        const QString path = line.section(isLink ? u" -> "_s : u" = "_s, 0, 0);
        QString content = line.section(isLink ? u" -> "_s : u" = "_s, 1);
        if (line.isEmpty() || line.startsWith(u'#'))
            return;
        if (line.startsWith(u"remove "_s))
            return remove(line.section(u' ', 1));
        if (isLink)
            return link(path, content);
        content.replace(u"\\n"_s, u"\n"_s).replace(u"\\t"_s, u"\t"_s).replace(u"\\0"_s, QString(QChar(0)));
        const QRegularExpressionMatch match = range.match(path);
        for (int number = match.captured(1).toInt(); number <= match.captured(2).toInt(); ++number) {
            const QString digits = QString::number(number);
            write(QString(path).replace(range, digits), QString(content).replace(u"{}"_s, digits).toUtf8() + '\n');
        }
    }

    /// playLines() with this tree.
    [[nodiscard]] QStringList play(const QStringList& lines,
                                   const std::function<QString(const QString&)>& answer) const {
        return playLines(
            lines, [this](const QString& line) { install(line); }, answer);
    }

    [[nodiscard]] QString full(const QString& path) const { return folder_.filePath(path); }

private:
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

    QTemporaryDir folder_;
};

/// The rows of a test: the cases of a file in tests/fixtures. "== NAME" begins each.
inline void addCases(const QString& fixture) {
    QTest::addColumn<QStringList>("lines");
    const QString text = QString::fromUtf8(readFile(QStringLiteral(TARNWICK_FIXTURES "/") + fixture));
    for (const QString& each : text.split(u"\n== "_s).sliced(1)) {
        const QStringList lines = each.trimmed().split(u'\n');
        QTest::newRow(qPrintable(lines.first())) << lines.sliced(1);
    }
    if (text.isEmpty())
        qFatal("%s is missing", qPrintable(fixture));
}

} // namespace tarnwick
