#include "browser/BrowserUi.h"

#include "base/Texts.h"
#include "browser/NodeText.h"
#include "browser/PaneGeometry.h"
#include "controls/CatalogueImages.h"
#include "controls/Extender.h"
#include "controls/Screen.h"
#include "controls/UserControl.h"
#include "core/TextOrder.h"
#include "core/mdlGraphics.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

/// A constituent control under its name, and the one by which screen readers know it.
template<class Control>
Control* constituent(UserControl& face, const QString& name, TextId accessibleName) {
    auto* control = new Control(&face);
    control->setObjectName(name);
    control->setAccessibleName(text(accessibleName));
    return control;
}

Image* hiddenPicture(UserControl& face, const QString& name, DragPicture picture) {
    auto* const image = new Image(&face);
    image->setObjectName(name);
    image->setPicture(dragPicture(picture));
    image->hide();
    return image;
}

void addColumn(ListView& list, const UserControl& face, TextId caption, Single room = 0) {
    const QString header = text(caption);
    list.ColumnHeaders().Add(header, face.TextWidth(header) + room);
}

} // namespace

BrowserUi::BrowserUi(UserControl& face)
    : iLVArt(catalogueImages(&face))
    , LVArt(constituent<ListView>(face, u"LVArt"_s, TextId::BrowserNamePool))
    , picSplitterArt(constituent<PictureBox>(face, u"picSplitterArt"_s, TextId::BrowserNameSplitterArt))
    , TV(constituent<TreeView>(face, u"TV"_s, TextId::BrowserNameTree))
    , picSplitter(constituent<PictureBox>(face, u"picSplitter"_s, TextId::BrowserNameSplitter))
    , LV(constituent<ListView>(face, u"LV"_s, TextId::BrowserNameList))
    , SB(constituent<StatusBar>(face, u"SB"_s, TextId::BrowserNameStatusBar))
    , PB(constituent<ProgressBar>(face, u"PB"_s, TextId::BrowserNameProgress))
    , lblStatus(constituent<QLabel>(face, u"lblStatus"_s, TextId::BrowserNameProgressText))
    , DragTimer(new IntervalTimer(&face))
    , SpringTimer(new IntervalTimer(&face))
    , Notice(new NoticeBar(&face))
    , NoticeTimer(new IntervalTimer(&face))
    , ImageDragArticle(hiddenPicture(face, u"ImageDragArticle"_s, DragPicture::MoveArticle))
    , ImageCopyArticle(hiddenPicture(face, u"ImageCopyArticle"_s, DragPicture::CopyArticle))
    , ImageDragFolder(hiddenPicture(face, u"ImageDragFolder"_s, DragPicture::MoveFolder))
    , ImageCopyFolder(hiddenPicture(face, u"ImageCopyFolder"_s, DragPicture::CopyFolder))
    , ImageNoDrop(hiddenPicture(face, u"ImageNoDrop"_s, DragPicture::NoDrop)) {
    DragTimer->setObjectName(u"DragTimer"_s);
    SpringTimer->setObjectName(u"SpringTimer"_s);
    Notice->setObjectName(u"Notice"_s);
    NoticeTimer->setObjectName(u"NoticeTimer"_s);
    setHeight(*lblStatus, face.TextHeight(u"Tg"_s));
    lblStatus->lower(); // it shows where the panes are hidden
    lblStatus->setVisible(false);
    PB->setVisible(false);
    addColumns(face);
    addPanels();
    for (PictureBox* splitter : {picSplitterArt, picSplitter}) {
        setTop(*splitter, splitterTop);
        setWidth(*splitter, splitterWidth);
        splitter->setCursor(Qt::SizeHorCursor);
    }
    TV->setImageList(iLVArt);
    TV->setNameOf([](const Item& node) { return NameFromNodeText(node.Text()); });
    LVArt->setNameOf([](const Item& row) { return static_cast<const ListItem&>(row).SubItems(1); });
    LV->setNameOf([](const Item& row) { return static_cast<const ListItem&>(row).SubItems(2); });
    for (ListView* list : {LVArt, LV}) {
        list->setMultiSelect(true);
        list->setSmallIcons(iLVArt);
        list->setTextOrder(textSortKey);
    }
    for (QFrame* framed : std::initializer_list<QFrame*>{LVArt, TV, LV, SB})
        mdlGraphics::SetFlatEdge(framed);
    SB->resize(SB->sizeHint());
}

void BrowserUi::showHints() const {
    LVArt->setEmptyText(text(TextId::BrowserEmptyPool));
    TV->setEmptyText(text(TextId::BrowserEmptyTree));
    LV->setEmptyText(text(TextId::BrowserEmptyList));
}

void BrowserUi::addColumns(const UserControl& face) {
    addColumn(*LV, face, TextId::BrowserColumnPosition, iconRoom());
    addColumn(*LV, face, TextId::BrowserColumnArticleNumber);
    addColumn(*LV, face, TextId::BrowserColumnArticleName);
    addColumn(*LVArt, face, TextId::BrowserColumnArticleNumber, iconRoom());
    addColumn(*LVArt, face, TextId::BrowserColumnArticleName);
}

void BrowserUi::addPanels() {
    for (const QString& pane : {u"LVArt"_s, u"TV"_s, u"LV"_s})
        SB->addPanel(pane);
}

Single iconRoom() {
    return 16 * screen().TwipsPerPixelX();
}

} // namespace mkl
