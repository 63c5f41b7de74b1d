#include "core/mdlCommand.h"

#include "core/App.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace mkl::mdlCommand {

namespace {

bool isSeparator(QChar c) {
    return c == u'/' || c == u'\\';
}

bool holdsPath(const QString& file) {
    return std::ranges::any_of(file, isSeparator);
}

} // namespace

void NormalizeHelpfile(QString& Helpfile) {
    if (Helpfile.isEmpty()) Helpfile = u"mklart25.chm"_s;
    if (!holdsPath(Helpfile)) {
        QString path = app().Path();
        if (path.isEmpty() || !isSeparator(path.back())) path += QDir::separator();
        Helpfile.prepend(path);
    }
    app().setHelpFile(Helpfile);
}

} // namespace mkl::mdlCommand
