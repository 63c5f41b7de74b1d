#include "base/Texts.h"

#include <algorithm>
#include <functional>
#include <span>
#include <string_view>

namespace mkl {

namespace {

struct NumberedRow {
    Long number;
    int argumentCount;
    std::u16string_view text;
};

struct NamedRow {
    std::string_view name;
    int argumentCount;
    std::u16string_view text;
};

#define U16_(x) u##x
#define U16(x) U16_(x)

constexpr NumberedRow codedRows[] = {
#define CODED(code, argumentCount, text) {code, argumentCount, U16(text)},
#include "base/texts_de.def"
};

constexpr NumberedRow runTimeRows[] = {
#define RUNTIME(number, argumentCount, text) {number, argumentCount, U16(text)},
#include "base/texts_de.def"
};

constexpr NamedRow namedRows[] = {
#define NAMED(id, argumentCount, text) {#id, argumentCount, U16(text)},
#include "base/texts_de.def"
};

struct EnglishRow {
    TextId id;
    int argumentCount;
    std::u16string_view text;
};

constexpr NumberedRow englishRunTimeRows[] = {
#define RUNTIME(number, argumentCount, text) {number, argumentCount, U16(text)},
#include "base/texts_en.def"
};

constexpr EnglishRow englishRows[] = {
#define NAMED(id, argumentCount, text) {TextId::id, argumentCount, U16(text)},
#include "base/texts_en.def"
};

constexpr int highestPlaceholder(std::u16string_view text) {
    int highest = 0;
    for (std::size_t i = 0; i + 1 < text.size(); ++i)
        if (text[i] == u'%' && text[i + 1] >= u'1' && text[i + 1] <= u'9')
            highest = std::max(highest, text[i + 1] - u'0');
    return highest;
}

template<class Rows>
constexpr bool placeholdersFit(const Rows& rows) {
    return std::ranges::all_of(rows, [](const auto& row) { return highestPlaceholder(row.text) <= row.argumentCount; });
}

static_assert(std::ranges::is_sorted(codedRows, std::less_equal<Long>{}, &NumberedRow::number),
              "CODED rows: sort by code, each once");
static_assert(std::ranges::is_sorted(runTimeRows, std::less_equal<Long>{}, &NumberedRow::number),
              "RUNTIME rows: sort by number, each once");
static_assert(std::ranges::is_sorted(namedRows, {}, &NamedRow::name), "NAMED rows: sort by name");
static_assert(placeholdersFit(codedRows) && placeholdersFit(runTimeRows) && placeholdersFit(namedRows),
              "a placeholder without its argument");

constexpr bool matchesGerman(const NumberedRow& row) {
    const auto german = std::ranges::lower_bound(runTimeRows, row.number, {}, &NumberedRow::number);
    return german != std::ranges::end(runTimeRows) && german->number == row.number &&
           german->argumentCount == row.argumentCount;
}

static_assert(std::ranges::is_sorted(englishRunTimeRows, std::less_equal<Long>{}, &NumberedRow::number) &&
                  std::ranges::all_of(englishRunTimeRows, matchesGerman),
              "English RUNTIME rows: sort by number, each with its German row");
static_assert(std::ranges::is_sorted(englishRows, std::less_equal<TextId>{}, &EnglishRow::id) &&
                  std::ranges::all_of(englishRows,
                                      [](const EnglishRow& row) {
                                          return row.argumentCount == namedRows[static_cast<int>(row.id)].argumentCount;
                                      }),
              "English NAMED rows: sort by name, as many arguments as in German");
static_assert(placeholdersFit(englishRunTimeRows) && placeholdersFit(englishRows),
              "a placeholder without its argument");

Language language = Language::German;

std::u16string_view patternOf(TextId id) {
    const auto row = std::ranges::lower_bound(englishRows, id, {}, &EnglishRow::id);
    const bool english = language == Language::English && row != std::ranges::end(englishRows) && row->id == id;
    return english ? row->text : namedRows[static_cast<int>(id)].text;
}

const NumberedRow* find(std::span<const NumberedRow> rows, Long number) {
    const auto row = std::ranges::lower_bound(rows, number, {}, &NumberedRow::number);
    return row != rows.end() && row->number == number ? &*row : nullptr;
}

QString numbered(const NumberedRow* row, TextId fallback, Long number, std::initializer_list<QString> arguments) {
    if (!row) return text(fallback, {QString::number(number)});
    return fillText(row->text, arguments);
}

} // namespace

Language textLanguage() {
    return language;
}

void setTextLanguage(Language newLanguage) {
    language = newLanguage;
}

QString fillText(QStringView pattern, std::initializer_list<QString> arguments) {
    QString result;
    result.reserve(pattern.size() + 32);
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        const int index = c == u'%' && i + 1 < pattern.size() ? pattern[i + 1].unicode() - u'1' : -1;
        if (index < 0 || index > 8) {
            result += c;
            continue;
        }
        if (index < static_cast<int>(arguments.size())) result += *(arguments.begin() + index);
        ++i;
    }
    return result;
}

QString text(TextId id, std::initializer_list<QString> arguments) {
    return fillText(patternOf(id), arguments);
}

QString codedText(Long code, std::initializer_list<QString> arguments) {
    return numbered(find(codedRows, code), TextId::UnknownMessage, code, arguments);
}

bool hasCodedText(Long code) {
    return find(codedRows, code) != nullptr;
}

QString runTimeText(Long number, std::initializer_list<QString> arguments) {
    const NumberedRow* english = language == Language::English ? find(englishRunTimeRows, number) : nullptr;
    return numbered(english ? english : find(runTimeRows, number), TextId::UnknownRunTimeError, number, arguments);
}

} // namespace mkl
