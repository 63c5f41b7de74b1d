#pragma once
#include "dao/RowStore.h"
#include "jet/syntax/Shape.h"

#include <QHash>
#include <QStringView>
#include <memory>

namespace dao {

class Connection;

/// During a walk (see Walk.h) the rows that statements of one shape give for all keys.
class ReadAhead {
public:
    void beginWalk() { ++walks_; }
    void endWalk();
    bool isOn() const { return walks_ > 0; }

    /// Puts the rows of the statement into the store. False where it has to be run by itself.
    bool answer(const jet::Shape& shape, QStringView text, Connection& connection, RowStore& rows);
    /// The tables have changed.
    void clear() { byShape_.clear(); }

    /// So many statements of a shape are run by themselves, since the walk may be short.
    static constexpr int patience = 8;
    /// How many were answered from rows at hand since the database was opened, for tests and figures.
    qint64 answered() const { return answered_; }

private:
    struct Group {
        qsizetype first, end;
    };
    struct AllRows {
        int asked = 0;
        bool isRead = false;
        int outputs = 0;
        int keyLiteral = 0;
        bool keyNegated = false;
        quint64 changes = 0; ///< as they were when the rows were read
        RowStore rows;
        QHash<qint64, Group> groups; ///< by key
    };

    static void read(AllRows& all, QStringView text, Connection& connection);

    int walks_ = 0;
    QHash<QString, std::shared_ptr<AllRows>> byShape_;
    qint64 answered_ = 0;
};

} // namespace dao
