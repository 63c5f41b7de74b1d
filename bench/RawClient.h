#pragma once
// The plain client interface of either engine, as much of it as the baselines of the commands need: one way to the
// database for each statement, as a program without a data layer would use it.
#include <QString>
#include <memory>

namespace bench {

enum class Engine : quint8 { File, Server };

/// A prepared statement; parameters and results are whole numbers.
class RawQuery {
public:
    virtual ~RawQuery() = default;
    virtual void bind(int number, int value) = 0;
    /// To the next row; an action is run and has none.
    virtual bool step() = 0;
    virtual int integer(int column) const = 0;
    virtual void reset() = 0;
    /// Runs it with these parameters; false if it gave no row.
    template<class... Values>
    bool run(Values... values) {
        int number = 0;
        (bind(++number, values), ...);
        const bool hasRow = step();
        reset();
        return hasRow;
    }
};

class RawClient {
public:
    virtual ~RawClient() = default;
    /// Statements that mean the same on both engines: every name quoted. Several are allowed.
    virtual void exec(const QString& statements) = 0;
    /// Parameters are ?1, ?2, …
    virtual std::unique_ptr<RawQuery> prepare(const QString& statement) = 0;
    virtual void begin() = 0;
    void commit() { exec(QStringLiteral("COMMIT")); }
    /// What the table of figures calls it.
    virtual QString name() const = 0;
};

std::unique_ptr<RawClient> rawClient(Engine engine, const QString& catalogue);

} // namespace bench
