#pragma once
#include "jet/syntax/SelectParser.h"

namespace jet {

/// Reads INSERT, UPDATE and DELETE, and the list of PARAMETERS in front of a statement.
class ActionParser {
public:
    explicit ActionParser(TokenStream& tokens)
        : tokens_(tokens)
        , expressions_(tokens)
        , selects_(tokens) {}

    InsertStatement parseInsert();
    UpdateStatement parseUpdate();
    DeleteStatement parseDelete();
    /// PARAMETERS name type, …; up to its ";". Nobody can give values, so a name that is used is unknown all the same.
    void parseParameters();

private:
    void parseColumns(InsertStatement& insert);
    void parseValues(InsertStatement& insert);
    void parseAssignment(SelectStatement& rows);
    void parseDeleted(DeleteStatement& statement);
    void parseParameter();
    std::vector<FromPtr> parseTables(mkl::Long errorNumber);
    void expectEnd(mkl::Long errorNumber) const;

    TokenStream& tokens_;
    ExpressionParser expressions_;
    SelectParser selects_;
};

} // namespace jet
