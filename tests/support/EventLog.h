#pragma once
// Signals as lines: "ItemSelected(41, 2)". Items stand there by their key.
#include <QObject>
#include <QString>
#include <QStringList>
#include <type_traits>
#include <utility>

namespace mkl {

class EventLog {
public:
    /// Writes a line under that name whenever the sender raises the signal.
    template<class Sender, class Signal>
    void record(const Sender* sender, Signal signal, const QString& name) {
        QObject::connect(sender, signal, &context_, [this, name](const auto&... arguments) {
            lines_.append(name + u'(' + QStringList{argumentText(arguments)...}.join(u", ") + u')');
        });
    }
    void note(const QString& line) { lines_.append(line); }

    /// The lines since the last call.
    QStringList take() { return std::exchange(lines_, {}); }

private:
    template<class Argument>
    static QString argumentText(const Argument& argument) {
        if constexpr (std::is_pointer_v<Argument>)
            return argument->Key();
        else
            return QString::number(static_cast<qlonglong>(argument));
    }

    QObject context_;
    QStringList lines_;
};

} // namespace mkl
