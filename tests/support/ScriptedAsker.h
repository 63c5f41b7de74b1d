#pragma once
// Answers message boxes and input boxes by lists and keeps what was shown.
#include "controls/Asker.h"

#include <QList>
#include <functional>

namespace mkl {

class ScriptedAsker final : public Asker {
public:
    ScriptedAsker()
        : former_(setAsker(this)) {}
    ~ScriptedAsker() override { setAsker(former_); }
    Q_DISABLE_COPY_MOVE(ScriptedAsker)

    Long ask(const MessageBox& box) override {
        shown.append(box);
        if (whileShown) whileShown();
        return answers.isEmpty() ? Long(vbOK) : answers.takeFirst();
    }
    std::optional<QString> askText(const QString& prompt, const QString& caption, const QString& preset) override {
        asked.append({prompt, caption, preset});
        if (whileShown) whileShown();
        return texts.isEmpty() ? std::nullopt : texts.takeFirst();
    }

    /// What an input box was opened with.
    struct TextQuestion {
        QString prompt;
        QString caption;
        QString preset;
    };

    QList<Long> answers; ///< taken from the front; vbOK when used up
    QList<MessageBox> shown;
    QList<std::optional<QString>> texts; ///< of the input boxes, likewise; cancelled when used up
    QList<TextQuestion> asked;
    std::function<void()> whileShown; ///< what happens before the answer

private:
    Asker* former_;
};

} // namespace mkl
