#include "apps/mklart/ServerAccess.h"

#include <iostream>
#include <string>

#if __has_include(<termios.h>)
#include <csignal>
#include <termios.h>
#endif

namespace mkl {

namespace {

#if __has_include(<termios.h>)

constexpr int input = 0;

termios shown{};

// Ctrl+C at the question must not leave a terminal behind that shows nothing any more.
extern "C" void showAndEnd(int signal) {
    tcsetattr(input, TCSANOW, &shown);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

bool isTerminal() {
    termios ignored{};
    return tcgetattr(input, &ignored) == 0;
}

/// What is typed is not shown as long as it lives.
class Hidden {
public:
    Hidden() {
        tcgetattr(input, &shown);
        for (int i = 0; i < 2; ++i)
            former_[i] = std::signal(signals[i], showAndEnd);
        termios hidden = shown;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(input, TCSAFLUSH, &hidden);
    }
    ~Hidden() {
        tcsetattr(input, TCSANOW, &shown);
        for (int i = 0; i < 2; ++i)
            std::signal(signals[i], former_[i]);
    }
    Q_DISABLE_COPY_MOVE(Hidden)

private:
    static constexpr int signals[] = {SIGINT, SIGTERM};
    void (*former_[2])(int) = {};
};

#else

bool isTerminal() {
    return false;
}

struct Hidden {};

#endif

std::optional<QString> askOnTerminal(const QString& prompt) {
    std::string line;
    {
        const Hidden hidden;
        std::cerr << prompt.toStdString() << std::flush;
        std::getline(std::cin, line);
    }
    std::cerr << std::endl; // the one that was typed was not shown either
    if (!std::cin) return {};
    return QString::fromStdString(line);
}

} // namespace

dao::OpenOptions accessTo(const QString& name, const dao::OpenOptions& options) {
    return accessTo(name, options, isTerminal() ? PasswordQuestion(askOnTerminal) : PasswordQuestion());
}

} // namespace mkl
