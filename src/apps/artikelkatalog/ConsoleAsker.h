#pragma once
#include "controls/Asker.h"
#include "controls/FormRunner.h"

namespace mkl {

/// Answers for nobody: what would be a message box or a form goes to standard error, and every question is declined.
class ConsoleAsker final : public Asker, public FormRunner {
public:
    Long ask(const MessageBox& box) override;
    std::optional<QString> askText(const QString& prompt, const QString& caption, const QString& preset) override;
    int run(QDialog& form) override;

    /// Whether there was anything to tell.
    bool wasAsked() const { return wasAsked_; }

private:
    void print(const QString& message);

    bool wasAsked_ = false;
};

} // namespace mkl
