#pragma once
// Every German text of the system: one table, three kinds of row.
#include "base/types.h"

#include <QString>
#include <initializer_list>

namespace mkl {

/// Captions, tool tips, messages of the programs: the rows NAMED of texts_de.def.
enum class TextId : int {
#define NAMED(id, argumentCount, text) id,
#include "base/texts_de.def"
};

/// Language of text() and runTimeText(). The controls speak German alone; the command-line tool can speak English.
enum class Language : quint8 { German, English };
Language textLanguage();
void setTextLanguage(Language language);

/// Puts the arguments in for %1, %2, …, in one pass: an argument may itself hold "%2".
QString fillText(QStringView pattern, std::initializer_list<QString> arguments);

/// The text of that name, arguments put in.
QString text(TextId id, std::initializer_list<QString> arguments = {});

/// The message or library text of that code; an unknown code gives a text that names the code.
QString codedText(Long code, std::initializer_list<QString> arguments = {});
bool hasCodedText(Long code);

/// The description of a run-time error; an unknown number gives a text that names the number.
QString runTimeText(Long number, std::initializer_list<QString> arguments = {});

} // namespace mkl
