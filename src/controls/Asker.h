#pragma once
#include "base/types.h"

#include <QString>
#include <optional>

namespace mkl {

/// Flags of a message box: one of the button sets, one picture, one default button.
enum MessageBoxFlags : Long {
    vbOKOnly = 0,
    vbOKCancel = 1,
    vbYesNoCancel = 3,
    vbYesNo = 4,
    vbCritical = 16,
    vbQuestion = 32,
    vbExclamation = 48,
    vbInformation = 64,
    vbDefaultButton2 = 256,
    vbDefaultButton3 = 512
};

/// Answers to a message box.
enum MessageBoxResult : Long { vbOK = 1, vbCancel = 2, vbYes = 6, vbNo = 7 };

/// A question or message to the user, as plain texts.
struct MessageBox {
    QString text;
    Long flags = vbOKOnly; ///< sum of MessageBoxFlags
    QString caption{};     ///< empty: the application's name
    QString detail{};      ///< shown in full below the text
};

/// Asks the user. Replaceable, so that tests answer by themselves.
class Asker {
public:
    virtual ~Asker() = default;
    /// Shows the box and gives the answer (MessageBoxResult). Closing it counts as Cancel, without one as No.
    virtual Long ask(const MessageBox& box) = 0;
    /// Asks for a line of text; nothing when the user cancels.
    virtual std::optional<QString> askText(const QString& prompt, const QString& caption,
                                           const QString& preset = {}) = 0;
};

/// The asker in force; real dialogs unless another was set.
Asker& asker();
/// Puts another asker in force and returns the former one; nullptr restores the dialogs. The caller keeps ownership.
Asker* setAsker(Asker* asker);

} // namespace mkl
