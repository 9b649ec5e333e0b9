#pragma once

#include "Files.h"

#include <QStringList>

namespace tarnwick {

/// The lines of one of the files in tests/fixtures, empty ones left out.
[[nodiscard]] inline QStringList fixtureLines(const QString& name) {
    const QByteArray text = readFile(QStringLiteral(TARNWICK_FIXTURES "/") + name);
    if (text.isEmpty())
        qFatal("%s cannot be read", qPrintable(name));
    return QString::fromUtf8(text).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace tarnwick
