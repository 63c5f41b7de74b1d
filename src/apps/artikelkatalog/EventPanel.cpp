#include "apps/artikelkatalog/EventPanel.h"

#include "base/Texts.h"
#include "controls/TreeView.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QMetaEnum>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

constexpr int mostLines = 2000;

QString described(acbPanes pane) {
    const char* name = QMetaEnum::fromType<acbPanes>().valueToKey(pane);
    return name ? QString::fromLatin1(name) : QString::number(pane);
}

QString described(const Item* item) {
    return item ? u'"' + item->Text() + u'"' : u"Nothing"_s;
}

template<class Number>
requires std::is_arithmetic_v<Number> QString described(Number number) {
    return QString::number(number);
}

} // namespace

EventPanel::EventPanel(QWidget* parent)
    : QWidget(parent)
    , text_(new QPlainTextEdit(this))
    , mouseMoves_(new QCheckBox(text(TextId::ProgramEventMouseMoves), this)) {
    text_->setObjectName(u"Events"_s);
    text_->setAccessibleName(text(TextId::ProgramEvents));
    text_->setReadOnly(true);
    text_->setMaximumBlockCount(mostLines);
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setMinimumWidth(text_->fontMetrics().averageCharWidth() * 48);
    mouseMoves_->setObjectName(u"MouseMoves"_s);
    auto* clearButton = new QPushButton(text(TextId::ProgramEventClear), this);
    clearButton->setObjectName(u"ClearEvents"_s);
    connect(clearButton, &QPushButton::clicked, this, &EventPanel::clear);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(mouseMoves_);
    buttons->addStretch();
    buttons->addWidget(clearButton);
    auto* column = new QVBoxLayout(this);
    column->addWidget(text_);
    column->addLayout(buttons);
}

template<class... Arguments>
void EventPanel::show(ArtCatBrowser& browser, void (ArtCatBrowser::*signal)(Arguments...), const QString& name) {
    connect(&browser, signal, this, [this, name](const std::remove_reference_t<Arguments>&... arguments) {
        append(name + u'(' + QStringList{described(arguments)...}.join(u", "_s) + u')');
    });
}

void EventPanel::watch(ArtCatBrowser& browser) {
    show(browser, &ArtCatBrowser::ItemSelected, u"ItemSelected"_s);
    show(browser, &ArtCatBrowser::ItemClick, u"ItemClick"_s);
    show(browser, &ArtCatBrowser::Resize, u"Resize"_s);
    show(browser, &ArtCatBrowser::Click, u"Click"_s);
    show(browser, &ArtCatBrowser::DblClick, u"DblClick"_s);
    show(browser, &ArtCatBrowser::MenuPropertiesClick, u"MenuPropertiesClick"_s);
    show(browser, &ArtCatBrowser::Quit, u"Quit"_s);
    show(browser, &ArtCatBrowser::PaneClick, u"PaneClick"_s);
    show(browser, &ArtCatBrowser::PaneDblClick, u"PaneDblClick"_s);
    show(browser, &ArtCatBrowser::Help, u"Help"_s);
    show(browser, &ArtCatBrowser::MouseDown, u"MouseDown"_s);
    show(browser, &ArtCatBrowser::MouseMove, u"MouseMove"_s);
    show(browser, &ArtCatBrowser::MouseUp, u"MouseUp"_s);
}

void EventPanel::append(const QString& line) {
    if (line.startsWith(u"MouseMove("_s) && !mouseMoves_->isChecked()) return;
    text_->appendPlainText(line);
}

void EventPanel::clear() {
    text_->clear();
}

QStringList EventPanel::lines() const {
    return text_->toPlainText().split(u'\n', Qt::SkipEmptyParts);
}

} // namespace mkl
