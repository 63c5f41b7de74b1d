#include "core/MessageService.h"

#include "base/Texts.h"
#include "controls/Asker.h"
#include "core/App.h"
#include "core/MessageText.h"

namespace mkl {

Long MessageService::ShowCoded(Long Code, Long Flags, const QString& Detail, const Variant& v1,
                               const Variant& v2) const {
    MessageBox box{.text = Detail, .flags = Flags, .caption = app().Title(), .detail = {}};
    if (Code != 0) {
        box.text = messageText(Code, v1, v2);
        box.detail = Detail;
    }
    return asker().ask(box);
}

QString MessageService::LibraryText(Long Number) const {
    return codedText(Number);
}

const MessageService& messageService() {
    static const MessageService instance;
    return instance;
}

} // namespace mkl
