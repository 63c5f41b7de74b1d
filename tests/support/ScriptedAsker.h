#pragma once
// Answers message boxes by a list and keeps what was shown.
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
    std::optional<QString> askText(const QString&, const QString&, const QString&) override { return {}; }

    QList<Long> answers; ///< taken from the front; vbOK when used up
    QList<MessageBox> shown;
    std::function<void()> whileShown; ///< what happens before the answer

private:
    Asker* former_;
};

} // namespace mkl
