#pragma once
#include <QString>

/// Plain functions shared by the controls.
namespace mkl::mdlCommand {

/// Completes the name of a help file and makes it the application's: an empty name becomes "mklart25.chm", a name
/// without "/" and "\" is put behind the path of the application, any other stands as it is.
void NormalizeHelpfile(QString& Helpfile);

} // namespace mkl::mdlCommand
