#pragma once
#include "browser/MenuTable.h"
#include "controls/Image.h"
#include "controls/ImageList.h"
#include "controls/IntervalTimer.h"
#include "controls/ListView.h"
#include "controls/NoticeBar.h"
#include "controls/PictureBox.h"
#include "controls/ProgressBar.h"
#include "controls/StatusBar.h"
#include "controls/TreeView.h"

#include <QFrame>
#include <QLabel>

namespace mkl {

class UserControl;

/// The constituent controls, owned by the browser as their parent.
struct BrowserUi {
    explicit BrowserUi(UserControl& face);

    /// From now on an empty pane says what to do.
    void showHints() const;

    ImageList* const iLVArt; ///< icons of all panes
    ListView* const LVArt;   ///< pool
    PictureBox* const picSplitterArt;
    TreeView* const TV;
    PictureBox* const picSplitter;
    ListView* const LV; ///< articles of the selected category
    StatusBar* const SB;
    ProgressBar* const PB;
    QLabel* const lblStatus;          ///< over the progress bar
    IntervalTimer* const DragTimer;   ///< between the press and the drag
    IntervalTimer* const SpringTimer; ///< while the mouse rests on a closed node
    NoticeBar* const Notice;          ///< of changes by others
    IntervalTimer* const NoticeTimer; ///< between two looks for them
    Image* const ImageDragArticle;    ///< what the pointer shows during a drag
    Image* const ImageCopyArticle;
    Image* const ImageDragFolder;
    Image* const ImageCopyFolder;
    Image* const ImageNoDrop;
    MenuTable menus; ///< KTV, KLV, KLVArt and KClose

private:
    void addColumns(const UserControl& face);
    void addPanels();
};

/// Width in twips of an icon in front of a text.
Single iconRoom();

} // namespace mkl
