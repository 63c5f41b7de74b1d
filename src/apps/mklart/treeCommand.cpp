#include "apps/mklart/CatalogueReader.h"
#include "apps/mklart/Command.h"
#include "apps/mklart/Commands.h"
#include "apps/mklart/Console.h"
#include "catalogue/CatalogueTree.h"

#include <limits>

namespace mkl {

using namespace Qt::StringLiterals;

int runTree(const Invocation& call) {
    constexpr auto lowest = std::numeric_limits<Long>::min(), highest = std::numeric_limits<Long>::max();
    CatalogueTree tree;
    tree.articles = !call.has(u"no-articles"_s);
    tree.levels = call.number(u"levels"_s, 0, 0, highest);
    if (call.has(u"root"_s)) tree.root = Variant(call.number(u"root"_s, 0, lowest, highest));

    CatalogueReader reader(call.argument(0));
    const qint64 unreachable = tree.write(reader.database(), printLine);
    if (unreachable > 0) complain(text(TextId::ToolTreeUnreachable, {QString::number(unreachable)}));
    return Success;
}

} // namespace mkl
