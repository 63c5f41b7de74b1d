#pragma once
#include "dao/StoredValue.h"

#include <QByteArrayView>

namespace dao {

// A column of no type holds values of any kind; on the server it is a text, in which all but texts bear a mark.

StoredValue markedValue(const StoredValue& value);
StoredValue unmarkedValue(QByteArrayView stored);

} // namespace dao
