#pragma once
#include "jet/SelectParser.h"

namespace jet {

/// Reads INSERT, UPDATE and DELETE.
class ActionParser {
public:
    explicit ActionParser(TokenStream& tokens)
        : tokens_(tokens)
        , expressions_(tokens)
        , selects_(tokens) {}

    InsertStatement parseInsert();
    UpdateStatement parseUpdate();
    DeleteStatement parseDelete();

private:
    void parseColumns(InsertStatement& insert);
    void parseValues(InsertStatement& insert);
    Assignment parseAssignment();
    void expectEnd(mkl::Long errorNumber) const;

    TokenStream& tokens_;
    ExpressionParser expressions_;
    SelectParser selects_;
};

} // namespace jet
