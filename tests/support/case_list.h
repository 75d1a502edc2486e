#pragma once

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

namespace ledgix::test {

// The member `cases` of a file in tests/data/cases; undefined when there is no such file.
inline QJsonValue CasesOf(const QString& file) {
    QFile cases(QStringLiteral(LEDGIX_TEST_DATA "/cases/") + file);
    if (!cases.open(QIODevice::ReadOnly)) {
        return QJsonValue::Undefined;
    }
    return QJsonDocument::fromJson(cases.readAll()).object().value("cases");
}

}  // namespace ledgix::test
