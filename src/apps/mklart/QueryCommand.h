#pragma once
// What `sql` and `find` have in common: how they open the file, where the texts to run come from, how they answer.
#include "apps/mklart/Command.h"
#include "dao/Workspace.h"

#include <functional>

namespace mkl {

/// Answers one statement or criterion; json: as one line of JSON.
using Answer = std::function<void(const QString& text, bool json)>;

/// The file of the call's first argument, opened as its options say.
class QueryFile {
public:
    explicit QueryFile(const Invocation& call);

    dao::Database& database() { return *database_; }

private:
    Ref<dao::Workspace> workspace_;
    Ref<dao::Database> database_;
};

/// Options of QueryFile.
QList<Option> queryFileOptions();

/// Runs the query that prepare makes: with the given text or, where that is "-", with each line of standard input in
/// turn. A line's failure is its answer and does not end the run; a failure of prepare does. The exit status.
int runQuery(const Invocation& call, const QString& text, const std::function<Answer()>& prepare);

} // namespace mkl
