#pragma once
#include <QElapsedTimer>
#include <QString>

namespace mkl {

/// Letters that the user types into a list, one soon after the other, to get to a name.
class TypeAhead {
public:
    struct Search {
        QString beginning; ///< of the name
        bool stepsOn;      ///< to the next such name; otherwise the present one may stay
    };

    /// What to look for after these letters.
    Search type(const QString& letters);
    /// Whether the next letter belongs to those before it.
    bool isRunning() const;

private:
    QString typed_;
    QElapsedTimer sinceLast_;
};

} // namespace mkl
