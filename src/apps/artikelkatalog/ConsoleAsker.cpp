#include "apps/artikelkatalog/ConsoleAsker.h"

#include <QDialog>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace mkl {

Long ConsoleAsker::ask(const MessageBox& box) {
    print(box.detail.isEmpty() ? box.text : box.text + u'\n' + box.detail);
    constexpr Long buttonSets = 7;
    switch (box.flags & buttonSets) {
    case vbOKOnly: return vbOK;
    case vbYesNo: return vbNo;
    default: return vbCancel;
    }
}

std::optional<QString> ConsoleAsker::askText(const QString& prompt, const QString&, const QString&) {
    print(prompt);
    return {};
}

int ConsoleAsker::run(QDialog& form) {
    print(form.accessibleDescription().isEmpty() ? form.windowTitle() : form.accessibleDescription());
    return QDialog::Rejected;
}

void ConsoleAsker::print(const QString& message) {
    wasAsked_ = true;
    std::fputs((message + u'\n').toUtf8().constData(), stderr);
}

} // namespace mkl
