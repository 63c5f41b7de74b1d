#pragma once
// What the commands that change the tree have in common: they read it again behind their commit.
#include "BrowserCommand.h"

namespace mkl {

/// The screen of such a command: the category is selected, and its host makes keys of the digit 3.
std::function<void(CommandHost&)> selectCategory(Long category);

/// A command that failed and has read the tree again.
extern const Outcome rereadTree;

/// The reads of the panes behind the commit; the list is read once or, where another node is selected then, twice.
QMap<QString, Outcome> readsBehind(bool edited, ListShows list);

/// A command that numbers a level in its transaction, whose failure it does not hear of.
BrowserCommand numbering(const char* name, const QString& procedure, int articles, Long selected, ListShows list);

} // namespace mkl
