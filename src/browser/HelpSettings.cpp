#include "browser/HelpSettings.h"

#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "core/mdlCommand.h"

namespace mkl {

void HelpSettings::ApplyHelpSettings() {
    for (QWidget* control : hub_.face.Controls())
        control->setProperty("HelpContextID", hub_.state.HelpContextID);
    mdlCommand::NormalizeHelpfile(hub_.state.Helpfile);
}

} // namespace mkl
