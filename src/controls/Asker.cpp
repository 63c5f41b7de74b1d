#include "controls/Asker.h"

#include "base/Texts.h"

#include <QApplication>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
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

/// A field below the text, so that the longest detail stays on the screen.
void addDetailField(QMessageBox& dialog, const QString& detail) {
    auto* const layout = qobject_cast<QGridLayout*>(dialog.layout());
    auto* const field = new QPlainTextEdit(detail, &dialog);
    field->setReadOnly(true);
    field->setTabChangesFocus(true);
    field->setMinimumSize(field->fontMetrics().averageCharWidth() * 70,
                          field->fontMetrics().height() * longDetailLines);
    layout->addWidget(field, layout->rowCount(), 0, 1, layout->columnCount());
}

class DialogAsker final : public Asker {
public:
    Long ask(const MessageBox& box) override {
        QMessageBox dialog(QApplication::activeWindow());
        dialog.setWindowTitle(titleOf(box.caption));
        dialog.setTextFormat(Qt::PlainText);
        dialog.setIcon(pictureOf(box.flags));
        const bool inField = isLong(box.detail);
        const QString separator = box.text.isEmpty() || box.detail.isEmpty() ? QString() : QStringLiteral("\n\n");
        dialog.setText(inField ? box.text : box.text + separator + box.detail);
        if (inField) addDetailField(dialog, box.detail);

        const Buttons buttons = addButtons(dialog, box.flags);
        dialog.setDefaultButton(buttons[defaultButton(box.flags, buttons.size())].widget);
        dialog.setEscapeButton(buttons.back().widget); // Cancel, else No, else OK
        dialog.exec();
        for (const Button& button : buttons)
            if (dialog.clickedButton() == button.widget) return button.answer;
        return buttons.back().answer;
    }

    std::optional<QString> askText(const QString& prompt, const QString& caption, const QString& preset) override {
        QInputDialog dialog(QApplication::activeWindow());
        dialog.setWindowTitle(titleOf(caption));
        dialog.setOkButtonText(text(TextId::AskerOk));
        dialog.setCancelButtonText(text(TextId::AskerCancel));
        dialog.setLabelText(QString(prompt).replace(u'&', QStringLiteral("&&")));
        dialog.setTextValue(preset);
        if (auto* const label = dialog.findChild<QLabel*>()) label->setTextFormat(Qt::PlainText);
        if (dialog.exec() != QDialog::Accepted) return std::nullopt;
        return dialog.textValue();
    }

private:
    static QString titleOf(const QString& caption) {
        return caption.isEmpty() ? QGuiApplication::applicationDisplayName() : caption;
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
