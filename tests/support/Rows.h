#pragma once

#include "Files.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <initializer_list>

namespace tarnwick {

/// Adds a table of tests/fixtures to a data-driven test. The file is a JSON array of rows; each row is its name, then
/// one text for each of these columns. A test of bytes reads them with QString::toLatin1().
inline void addRows(const char* file, std::initializer_list<const char*> columns) {
    for (const char* column : columns)
        QTest::addColumn<QString>(column);
    const QByteArray table = readFile(QStringLiteral(TARNWICK_FIXTURES "/") + QLatin1StringView(file));
    const QJsonArray rows = QJsonDocument::fromJson(table).array();
    for (const QJsonValue row : rows) {
        if (row.toArray().size() != qsizetype(columns.size()) + 1)
            qFatal("%s: a row has too few or too many texts", file);
        QTestData& data = QTest::newRow(row[0].toString().toUtf8().constData());
        for (qsizetype column = 1; column < row.toArray().size(); ++column)
            data << row[column].toString();
    }
}

} // namespace tarnwick
