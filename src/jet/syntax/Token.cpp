#include "jet/syntax/Token.h"

#include <algorithm>
#include <array>

namespace jet {

namespace {

struct Entry {
    QStringView word;
    Keyword keyword;
};

// Sorted, and in the order of Keyword.
constexpr std::array entries = {
    Entry{u"ALL", Keyword::All},
    Entry{u"AND", Keyword::And},
    Entry{u"ANY", Keyword::Any},
    Entry{u"AS", Keyword::As},
    Entry{u"ASC", Keyword::Asc},
    Entry{u"BETWEEN", Keyword::Between},
    Entry{u"BY", Keyword::By},
    Entry{u"DELETE", Keyword::Delete},
    Entry{u"DESC", Keyword::Desc},
    Entry{u"DISTINCT", Keyword::Distinct},
    Entry{u"DISTINCTROW", Keyword::DistinctRow},
    Entry{u"EQV", Keyword::Eqv},
    Entry{u"EXISTS", Keyword::Exists},
    Entry{u"FALSE", Keyword::False},
    Entry{u"FROM", Keyword::From},
    Entry{u"GROUP", Keyword::Group},
    Entry{u"HAVING", Keyword::Having},
    Entry{u"IMP", Keyword::Imp},
    Entry{u"IN", Keyword::In},
    Entry{u"INNER", Keyword::Inner},
    Entry{u"INSERT", Keyword::Insert},
    Entry{u"INTO", Keyword::Into},
    Entry{u"IS", Keyword::Is},
    Entry{u"JOIN", Keyword::Join},
    Entry{u"LEFT", Keyword::Left},
    Entry{u"LIKE", Keyword::Like},
    Entry{u"MOD", Keyword::Mod},
    Entry{u"NO", Keyword::No},
    Entry{u"NOT", Keyword::Not},
    Entry{u"NULL", Keyword::Null},
    Entry{u"OFF", Keyword::Off},
    Entry{u"ON", Keyword::On},
    Entry{u"OR", Keyword::Or},
    Entry{u"ORDER", Keyword::Order},
    Entry{u"OUTER", Keyword::Outer},
    Entry{u"PARAMETERS", Keyword::Parameters},
    Entry{u"PERCENT", Keyword::Percent},
    Entry{u"RIGHT", Keyword::Right},
    Entry{u"SELECT", Keyword::Select},
    Entry{u"SET", Keyword::Set},
    Entry{u"SOME", Keyword::Some},
    Entry{u"TOP", Keyword::Top},
    Entry{u"TRUE", Keyword::True},
    Entry{u"UNION", Keyword::Union},
    Entry{u"UPDATE", Keyword::Update},
    Entry{u"VALUES", Keyword::Values},
    Entry{u"WHERE", Keyword::Where},
    Entry{u"XOR", Keyword::Xor},
    Entry{u"YES", Keyword::Yes},
};

constexpr char16_t upper(QChar c) {
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c.unicode() - 32) : c.unicode();
}

constexpr bool less(QStringView a, QStringView b) {
    const qsizetype common = a.size() < b.size() ? a.size() : b.size();
    for (qsizetype i = 0; i < common; ++i)
        if (upper(a[i]) != upper(b[i])) return upper(a[i]) < upper(b[i]);
    return a.size() < b.size();
}

constexpr bool lessEntry(const Entry& a, const Entry& b) {
    return less(a.word, b.word);
}

static_assert(std::is_sorted(entries.begin(), entries.end(), lessEntry));

} // namespace

Keyword keywordOf(QStringView word) {
    const auto* const found = std::lower_bound(entries.begin(), entries.end(), Entry{word, Keyword::None}, lessEntry);
    return found != entries.end() && !less(word, found->word) ? found->keyword : Keyword::None;
}

bool isConstant(Keyword keyword) {
    return keyword == Keyword::True || keyword == Keyword::False || keyword == Keyword::Null;
}

bool isOperator(Keyword keyword) {
    switch (keyword) {
    case Keyword::And:
    case Keyword::Between:
    case Keyword::Eqv:
    case Keyword::Imp:
    case Keyword::In:
    case Keyword::Is:
    case Keyword::Like:
    case Keyword::Mod:
    case Keyword::Not:
    case Keyword::Or:
    case Keyword::Xor: return true;
    default: return false;
    }
}

bool isStrict(Keyword keyword) {
    if (isConstant(keyword) || isOperator(keyword)) return true;
    switch (keyword) {
    case Keyword::As:
    case Keyword::Distinct:
    case Keyword::From:
    case Keyword::Having:
    case Keyword::Into:
    case Keyword::Select:
    case Keyword::Union:
    case Keyword::Where: return true;
    default: return false;
    }
}

} // namespace jet
