#include "controls/Asker.h"

#include "base/Texts.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>

#include <vector>

namespace mkl {

namespace {

struct Button {
    Long answer;
    QPushButton* widget;
};
using Buttons = std::vector<Button>;

constexpr Long buttonMask = 0x0F;
constexpr Long pictureMask = 0xF0;
constexpr Long defaultMask = 0x300;
constexpr int longDetail = 800; // characters from which the detail gets a field with scroll bars
constexpr int longDetailLines = 12;

Buttons addButtons(QMessageBox& dialog, Long flags) {
    Buttons buttons;
    const auto add = [&](Long answer, TextId caption, QMessageBox::ButtonRole role) {
        buttons.push_back({answer, dialog.addButton(text(caption), role)});
    };
    const Long set = flags & buttonMask;
    if (set == vbYesNo || set == vbYesNoCancel) {
        add(vbYes, TextId::AskerYes, QMessageBox::YesRole);
        add(vbNo, TextId::AskerNo, QMessageBox::NoRole);
    } else {
        add(vbOK, TextId::AskerOk, QMessageBox::AcceptRole);
    }
    if (set == vbOKCancel || set == vbYesNoCancel) add(vbCancel, TextId::AskerCancel, QMessageBox::RejectRole);
    return buttons;
}

size_t defaultButton(Long flags, size_t count) {
    const auto wanted = static_cast<size_t>((flags & defaultMask) / vbDefaultButton2);
    return wanted < count ? wanted : 0;
}

QMessageBox::Icon pictureOf(Long flags) {
    switch (flags & pictureMask) {
    case vbCritical: return QMessageBox::Critical;
    case vbQuestion: return QMessageBox::Question;
    case vbExclamation: return QMessageBox::Warning;
    case vbInformation: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
    }
}

bool isLong(const QString& detail) {
    return detail.size() > longDetail || detail.count(u'\n') > longDetailLines;
}

/// A field between the text and the buttons, so that the longest detail stays on the screen.
void addDetailField(QMessageBox& dialog, const QString& detail) {
    auto* const layout = qobject_cast<QGridLayout*>(dialog.layout());
    auto* const buttons = dialog.findChild<QDialogButtonBox*>();
    auto* const field = new QPlainTextEdit(detail, &dialog);
    field->setReadOnly(true);
    field->setTabChangesFocus(true);
    field->setMinimumSize(field->fontMetrics().averageCharWidth() * 70,
                          field->fontMetrics().height() * longDetailLines);
    const int columns = layout->columnCount();
    layout->removeWidget(buttons);
    layout->addWidget(field, layout->rowCount(), 0, 1, columns);
    layout->addWidget(buttons, layout->rowCount(), 0, 1, columns);
}

QString titleOf(const QString& caption) {
    return caption.isEmpty() ? QGuiApplication::applicationDisplayName() : caption;
}

Buttons fill(QMessageBox& dialog, const MessageBox& box) {
    dialog.setWindowTitle(titleOf(box.caption));
    dialog.setTextFormat(Qt::PlainText);
    dialog.setIcon(pictureOf(box.flags));
    const bool inField = isLong(box.detail);
    const QString separator = box.text.isEmpty() || box.detail.isEmpty() ? QString() : QStringLiteral("\n\n");
    dialog.setText(inField ? box.text : box.text + separator + box.detail);
    Buttons buttons = addButtons(dialog, box.flags);
    dialog.setDefaultButton(buttons[defaultButton(box.flags, buttons.size())].widget);
    dialog.setEscapeButton(buttons.back().widget); // Cancel, else No, else OK
    if (inField) addDetailField(dialog, box.detail);
    return buttons;
}

void fill(QInputDialog& dialog, const QString& prompt, const QString& caption, const QString& preset) {
    dialog.setWindowTitle(titleOf(caption));
    dialog.setOkButtonText(text(TextId::AskerOk));
    dialog.setCancelButtonText(text(TextId::AskerCancel));
    dialog.setLabelText(QString(prompt).replace(u'&', QStringLiteral("&&"))); // the label is that of the field
    dialog.findChild<QLabel*>()->setTextFormat(Qt::PlainText);
    dialog.setTextValue(preset);
}

// The window that a dialog belongs to may be destroyed while it is open, and the dialog with it.
class DialogAsker final : public Asker {
public:
    Long ask(const MessageBox& box) override {
        const QPointer<QMessageBox> dialog(new QMessageBox(QApplication::activeWindow()));
        const Buttons buttons = fill(*dialog, box);
        dialog->exec();
        Long answer = buttons.back().answer;
        for (const Button& button : buttons)
            if (dialog && dialog->clickedButton() == button.widget) answer = button.answer;
        delete dialog;
        return answer;
    }

    std::optional<QString> askText(const QString& prompt, const QString& caption, const QString& preset) override {
        const QPointer<QInputDialog> dialog(new QInputDialog(QApplication::activeWindow()));
        fill(*dialog, prompt, caption, preset);
        std::optional<QString> answer;
        if (dialog->exec() == QDialog::Accepted && dialog) answer = dialog->textValue();
        delete dialog;
        return answer;
    }
};

DialogAsker dialogAsker;
Asker* current = &dialogAsker;

} // namespace

Asker& asker() {
    return *current;
}

Asker* setAsker(Asker* asker) {
    Asker* former = current;
    current = asker ? asker : &dialogAsker;
    return former;
}

} // namespace mkl
