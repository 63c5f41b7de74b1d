#include "apps/artikelkatalog/StartPage.h"

#include "base/Texts.h"
#include "controls/CatalogueImages.h"

#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

QLabel* centredLabel(const QString& caption, QWidget* parent) {
    auto* label = new QLabel(caption, parent);
    label->setAlignment(Qt::AlignCenter);
    label->setMargin(2); // capital umlauts reach above the line
    return label;
}

QPushButton* button(const QString& name, const QString& caption, QWidget* parent) {
    auto* made = new QPushButton(caption, parent);
    made->setObjectName(name);
    return made;
}

} // namespace

StartPage::StartPage(QWidget* parent)
    : QWidget(parent) {
    setObjectName(u"StartPage"_s);
    auto* picture = centredLabel({}, this);
    picture->setPixmap(applicationIcon().pixmap(QSize(96, 96), devicePixelRatio()));
    auto* title = centredLabel(text(TextId::ProgramStartTitle), this);
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    title->setFont(font);
    auto* open = button(u"OpenButton"_s, text(TextId::ProgramMenuOpen), this);
    auto* server = button(u"ServerButton"_s, text(TextId::ProgramMenuOpenServer), this);
    auto* import = button(u"ImportButton"_s, text(TextId::ProgramMenuImport), this);
    connect(open, &QPushButton::clicked, this, &StartPage::openWanted);
    connect(server, &QPushButton::clicked, this, &StartPage::serverWanted);
    connect(import, &QPushButton::clicked, this, &StartPage::importWanted);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(open);
    buttons->addWidget(server);
    buttons->addWidget(import);
    buttons->addStretch();
    auto* column = new QVBoxLayout(this);
    column->setSpacing(12);
    column->addStretch();
    column->addWidget(picture);
    column->addWidget(title);
    column->addWidget(centredLabel(text(TextId::ProgramStartHint), this));
    column->addLayout(buttons);
    column->addStretch();
}

} // namespace mkl
