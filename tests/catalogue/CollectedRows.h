#pragma once
// A sink that keeps everything, and short ways to the test data.
#include "catalogue/RowSource.h"

#include <QFile>
#include <QMap>
#include <QTemporaryDir>
#include <algorithm>

namespace mkl {

class CollectedRows final : public RowSink {
public:
    struct Table {
        QList<int> columns;
        qint64 expected = -1;
        QList<QList<Variant>> rows; ///< values in the order of the catalogue's columns, Null where one was not given
        bool ended = false;
    };

    void passOverTable(const QString& table) override { passedOver.append(table); }
    void passOverColumn(const QString& table, const QString& column) override {
        passedOver.append(columnTitle(table, column));
    }
    void beginTable(int table, const QList<int>& columns, qint64 expectedRows) override {
        current_ = &tables[catalogueTables()[table].name];
        width_ = catalogueTables()[table].columns.size();
        current_->columns = columns;
        current_->expected = expectedRows;
    }
    void row(std::span<const Variant> values) override {
        QList<Variant> row(width_);
        for (int i = 0; i < current_->columns.size(); ++i)
            row[current_->columns[i]] = values[i];
        current_->rows.append(row);
    }
    void endTable() override { current_->ended = true; }

    /// The rows as comparable texts, sorted: sources differ in their order.
    QStringList sorted(const QString& table) const {
        QStringList texts;
        for (const auto& row : tables[table].rows) {
            QStringList values;
            for (const Variant& value : row)
                values.append(value.isNull() ? QStringLiteral("Null")
                                             : QString::number(int(value.type())) + u':' + value.toText());
            texts.append(values.join(u'|'));
        }
        std::ranges::sort(texts);
        return texts;
    }

    QMap<QString, Table> tables;
    QStringList passedOver;

private:
    Table* current_ = nullptr;
    qsizetype width_ = 0;
};

inline QString testData(const QString& name) {
    return QStringLiteral(MKL_SOURCE_DIR "/tests/data/") + name;
}

/// A copy of the CSV folder whose files a test may change.
class CsvFolder {
public:
    CsvFolder() {
        for (const CatalogueTable& table : catalogueTables()) {
            const QString name = fileName(table.name);
            QFile::copy(testData(QStringLiteral("csv-small/") + name), path(table.name));
            QFile::setPermissions(path(table.name), QFile::ReadOwner | QFile::WriteOwner);
        }
    }

    QString path() const { return folder_.path(); }
    QString path(const QString& table) const { return folder_.filePath(fileName(table)); }
    QByteArray read(const QString& table) const {
        QFile file(path(table));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QString& table, const QByteArray& bytes) const {
        QFile file(path(table));
        if (file.open(QIODevice::WriteOnly)) file.write(bytes);
    }

private:
    static QString fileName(QString table) { return table.replace(u'/', u'_') + QStringLiteral(".csv"); }

    QTemporaryDir folder_;
};

} // namespace mkl
