#pragma once
#include "base/Variant.h"

#include <QString>

namespace mkl {

/// Message boxes and library texts by their number.
class MessageService {
public:
    /// Shows the message of that code with v1 and v2 put in and Detail below it; code 0 shows Detail alone.
    /// Flags as of a message box; result: the button pressed (2 Cancel, 6 Yes, 7 No …).
    Long ShowCoded(Long Code, Long Flags, const QString& Detail = {}, const Variant& v1 = {},
                   const Variant& v2 = {}) const;
    /// The library text of that number.
    QString LibraryText(Long Number) const;
};

/// The one service of the process.
const MessageService& messageService();

} // namespace mkl
