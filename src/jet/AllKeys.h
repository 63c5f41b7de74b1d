#pragma once
// A statement that asks for the rows of one key, turned into the one that gives the rows of all keys.
#include "jet/model/Plan.h"

#include <QStringView>
#include <optional>

namespace jet {

class Target;

struct AllKeysPlan {
    QByteArray
        native;    ///< UTF-8; its rows bear their key behind the outputs of the statement, the rows of a key together
    Parameter key; ///< the literal that stands for the one key
    QList<ColumnType> outputs; ///< types of the columns before the key
};

/// Of "SELECT … FROM one table WHERE column = literal ORDER BY …" with whole numbers on both sides and no other
/// literal; nothing for any other statement. The rows of each key are those of the statement, in its order; rows with
/// Null in the column are left out. Raises what compileStatement() raises, and for an aggregate among the outputs.
std::optional<AllKeysPlan> compileForAllKeys(QStringView text, const Schema& schema, const Target& target);

} // namespace jet
