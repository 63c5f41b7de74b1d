#pragma once
// What an instance of the browser knows. Everything else stands in its panes.
#include "base/Ref.h"
#include "browser/ArtCatBrowserEnums.h"
#include "browser/DragState.h"
#include "browser/PaneFocus.h"
#include "browser/SenderFilter.h"
#include "core/SessionHelper.h"
#include "dao/Workspace.h"

#include <array>

namespace mkl {

inline constexpr int paneCount = 3;

struct BrowserState {
    Ref<dao::Database> Backend;
    Ref<dao::Workspace> Workspace;
    Ref<SessionHelper> Helper;
    Ref<dao::Recordset> ArtKatTable; ///< open from Populate to Terminate

    std::array<QString, paneCount> Filter;
    QString WorkgroupFilter = noWorkgroupFilter.toString();
    QString ArticleNumberPattern; ///< empty before Populate
    Long CurrentSenderID = 0;
    QString AppName = QStringLiteral("Merkalon II.5");

    Long SelectedPoolArticle = 0; ///< keys of what is selected; 0 = none
    Long SelectedListArticle = 0;
    Long SelectedCategory = 0;
    std::array<Long, paneCount> LastClicked = {}; ///< by pane: what ItemClick reported last
    bool RefreshActive = false;                   ///< the row's twin in the other list is being shown anew
    QString CurrentNodeKey;                       ///< of the node clicked last

    acbImagesets Imageset = acbImageset1;
    bool ShowStatusBar = true;
    bool ShowArticlePool = true;
    bool ShowArticleList = true;
    Long PoolWidth = 0; ///< of the panes, in twips: what the splitters make of them, or what was set last
    Long ListWidth = 0;
    Long TreeWidth = 0;
    bool arranged = false; ///< the panes have been placed in a size that somebody gave
    bool AllowDragDrop = true;
    std::array<acbMenus, paneCount> ShowMenu = {everyMenu, everyMenu, everyMenu};
    Long HelpContextID = 1024;
    QString Helpfile; ///< with its path
    bool HelpEvent = false;
    bool Edited = false;

    bool keepsView = false; ///< extras of ours, off unless the host wants them
    bool editKeys = false;
    Long springOpenInterval = 0; ///< milliseconds
    bool changeNotice = false;
    std::array<bool, paneCount> isOutdated = {}; ///< by pane: others have changed something since its read
    bool isLost = false;                         ///< the server was out of reach when it was last looked at
    Long listCategory = 0;                       ///< whose articles the list pane shows

    DragState drag;
    PaneFocus focus; ///< of the panes that a display of a read has hidden

    Long treeReads = 0;  ///< how many reads of the tree have begun: a read that is no longer the last one gives up
    bool closed = false; ///< the control has gone; whoever served the message queue must look here
};

} // namespace mkl
