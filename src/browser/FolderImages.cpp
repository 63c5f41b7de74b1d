#include "browser/FolderImages.h"

namespace mkl {

using namespace Qt::StringLiterals;

QString folderImage(bool active, bool expanded, acbImagesets imageset) {
    // Literals as a whole: a tree of many nodes then shares eight texts.
    static const QString images[2][2][2] = {
        {{u"OrdnerZuOff"_s, u"OrdnerZuOn"_s}, {u"OrdnerAufOff"_s, u"OrdnerAufOn"_s}},
        {{u"OrdnerZu2Off"_s, u"OrdnerZu2On"_s}, {u"OrdnerAuf2Off"_s, u"OrdnerAuf2On"_s}},
    };
    return images[imageset == acbImageset2][expanded][active];
}

bool isActiveImage(QStringView image) {
    return image.endsWith(u"On");
}

} // namespace mkl
