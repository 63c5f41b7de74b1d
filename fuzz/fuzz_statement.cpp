// Binder and writer: what compiles must prepare in the engine and run there, or fail with a numbered error; what only
// reads changes nothing.
#include "Numbered.h"
#include "SmallDatabase.h"
#include "jet/Compiler.h"

namespace {

constexpr qsizetype mostTables = 5; // a product of more takes its time

void readAll(dao::Database& database, const QString& text) {
    const auto rows = database.OpenRecordset(text, dao::dbOpenSnapshot);
    for (; !rows->Eof(); rows->MoveNext())
        for (mkl::Long column = 0; column < rows->FieldCount(); ++column)
            rows->value(column).isNull();
}

void run(fuzz::SmallDatabase& small, const QString& text, bool reads) {
    dao::Transaction& transaction = small.connection().transaction();
    transaction.begin();
    const quint64 before = small.connection().changeStamp();
    fuzz::numberOf([&] {
        if (reads)
            readAll(small.database(), text);
        else
            small.database().Execute(text, dao::dbFailOnError);
    });
    if (reads && small.connection().changeStamp() != before) fuzz::finding(QStringLiteral("a SELECT that writes"));
    transaction.rollback();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static fuzz::SmallDatabase small;
    const QString text = fuzz::textOf(data, size);
    dao::Connection& connection = small.connection();
    connection.refreshSchema();
    jet::Plan plan;
    if (fuzz::numberOf([&] { plan = jet::compileStatement(text, connection.schema(), connection.target()); }) != 0)
        return 0;
    fuzz::accepted = true;
    const bool reads = plan.kind == jet::StatementKind::Select;
    if (fuzz::SmallDatabase::tablesIn(plan.native) <= mostTables)
        run(small, text, reads);
    else
        fuzz::numberOf([&] { connection.prepare(plan.native, reads ? dao::Access::Read : dao::Access::Write); });
    return 0;
}
