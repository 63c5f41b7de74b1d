#include "dao/CriterionGenerator.h"

#include <QByteArrayList>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

// The columns by kind: yes/no, Long, Double and Currency are numbers.
const QString numberColumns[] = {u"Ja"_s, u"Ganz"_s, u"Zahl"_s, u"Preis"_s};
const QString textColumns[] = {u"Name"_s, u"[An/Um]"_s};
const QString dateColumns[] = {u"Am"_s, u"[R].[Bis]"_s};

const QString numberLiterals[] = {u"0"_s,    u"1"_s,          u"-1"_s,          u"2"_s,          u"7"_s,
                                  u"2.5"_s,  u"-3.5"_s,       u".25"_s,         u"1E3"_s,        u"1E300"_s,
                                  u"&HFF"_s, u"2147483647"_s, u"-2147483648"_s, u"4294967296"_s, u"36526"_s,
                                  u"0.1"_s,  u"1E-7"_s,       u"True"_s,        u"False"_s};
const QString dateLiterals[] = {u"#1/1/2000#"_s,  u"#2000-01-01 18:00#"_s,   u"#12/29/1899 06:00#"_s, u"#12/30/1899#"_s,
                                u"#06:30#"_s,     u"#2/29/2004#"_s,          u"#12/31/9999#"_s,       u"#1/1/100#"_s,
                                u"#28/2/2002#"_s, u"#2002-02-28 23:59:59#"_s};
// Without "[": a pattern made of it may be broken, which a find and a statement answer differently.
const QString words[] = {u""_s,       u"a"_s,          u"A"_s,          u"ä"_s,       u"Ä"_s,      u"ss"_s,
                         u"ß"_s,      u"Straße"_s,     u"STRASSE"_s,    u"co-op"_s,   u"coop"_s,   u"co op"_s,
                         u" "_s,      u"a "_s,         u"12"_s,         u" 2.5 "_s,   u"1E2"_s,    u"æon"_s,
                         u"aeon"_s,   u"Öfen"_s,       u"Ofen"_s,       u"O'Neil"_s,  u"%"_s,      u"_"_s,
                         u"x*y"_s,    u"#"_s,          u"\u00e9"_s,     u"e\u0301"_s, u"\u0416"_s, u"\U0001F600"_s,
                         u"zz top"_s, u"01.02.2003"_s, u"2001-05-01"_s, u"-1"_s};

// Name, result kind (N, T, D) and kinds of the arguments: C condition, I small whole number, F format, U interval.
struct Signature {
    const char* name;
    char result;
    const char* arguments;
};
constexpr Signature signatures[] = {
    {"Abs", 'N', "N"},       {"Asc", 'N', "T"},          {"Atn", 'N', "N"},          {"CBool", 'N', "N"},
    {"CByte", 'N', "N"},     {"CCur", 'N', "N"},         {"CDate", 'D', "D"},        {"CDate", 'D', "N"},
    {"CDbl", 'N', "N"},      {"CDbl", 'N', "T"},         {"Choose", 'T', "ITT"},     {"Choose", 'N', "INTD"},
    {"Chr", 'T', "I"},       {"CInt", 'N', "N"},         {"CLng", 'N', "N"},         {"CLng", 'N', "T"},
    {"Cos", 'N', "N"},       {"CSng", 'N', "N"},         {"CStr", 'T', "N"},         {"CStr", 'T', "D"},
    {"CVar", 'N', "N"},      {"Date", 'D', ""},          {"DateAdd", 'D', "UID"},    {"DateDiff", 'N', "UDD"},
    {"DatePart", 'N', "UD"}, {"DateSerial", 'D', "III"}, {"DateValue", 'D', "D"},    {"DateValue", 'D', "T"},
    {"Day", 'N', "D"},       {"Exp", 'N', "N"},          {"Fix", 'N', "N"},          {"Format", 'T', "NF"},
    {"Format", 'T', "DF"},   {"Format", 'T', "TF"},      {"Hex", 'T', "N"},          {"Hour", 'N', "D"},
    {"IIf", 'N', "CNN"},     {"IIf", 'T', "CTT"},        {"IIf", 'D', "CDD"},        {"IIf", 'N', "CNT"},
    {"InStr", 'N', "TT"},    {"InStr", 'N', "ITT"},      {"InStrRev", 'N', "TT"},    {"Int", 'N', "N"},
    {"IsDate", 'N', "T"},    {"IsNull", 'N', "T"},       {"IsNumeric", 'N', "T"},    {"LCase", 'T', "T"},
    {"Left", 'T', "TI"},     {"Left", 'T', "NI"},        {"Len", 'N', "T"},          {"Len", 'N', "D"},
    {"Log", 'N', "N"},       {"LTrim", 'T', "T"},        {"Mid", 'T', "TI"},         {"Mid", 'T', "TII"},
    {"Minute", 'N', "D"},    {"Month", 'N', "D"},        {"Now", 'D', ""},           {"Nz", 'N', "NN"},
    {"Nz", 'T', "T"},        {"Nz", 'D', "DN"},          {"Oct", 'T', "N"},          {"Partition", 'T', "NIII"},
    {"Replace", 'T', "TTT"}, {"Right", 'T', "TI"},       {"Round", 'N', "NI"},       {"RTrim", 'T', "T"},
    {"Second", 'N', "D"},    {"Sgn", 'N', "N"},          {"Sin", 'N', "N"},          {"Space", 'T', "I"},
    {"Sqr", 'N', "N"},       {"Str", 'T', "N"},          {"StrComp", 'N', "TT"},     {"StrComp", 'N', "TTI"},
    {"String", 'T', "IT"},   {"StrReverse", 'T', "T"},   {"Switch", 'N', "CNCN"},    {"Switch", 'T', "CTCN"},
    {"Tan", 'N', "N"},       {"Time", 'D', ""},          {"TimeSerial", 'D', "III"}, {"TimeValue", 'D', "D"},
    {"Trim", 'T', "T"},      {"UCase", 'T', "T"},        {"Val", 'N', "T"},          {"Weekday", 'N', "D"},
    {"Weekday", 'N', "DI"},  {"Year", 'N', "D"},
};

const QString formats[] = {u"'0.00'"_s,
                           u"'#,##0'"_s,
                           u"'dd.mm.yyyy hh:nn:ss'"_s,
                           u"'General Number'"_s,
                           u"'>'"_s,
                           u"'Short Date'"_s,
                           u"'@@@'"_s,
                           u"'Yes/No'"_s,
                           u"'0%'"_s,
                           u"'yyyy-mm-dd'"_s,
                           u"''"_s};
const QString intervals[] = {u"'yyyy'"_s, u"'q'"_s, u"'m'"_s, u"'d'"_s, u"'ww'"_s, u"'h'"_s, u"'n'"_s, u"'s'"_s};
const QString patternPieces[] = {u"*"_s, u"?"_s, u"#"_s, u"[a-d]"_s, u"[!a-d]"_s, u"[ä-ü]"_s, u"[*]"_s, u"a"_s,
                                 u"S"_s, u"ß"_s, u"o"_s, u"2"_s,     u" "_s,      u"[s-]"_s,  u"[]"_s,  u"e"_s};

QString quoted(const QString& text) {
    QString doubled = text;
    return u'\'' + doubled.replace(u'\'', u"''"_s) + u'\'';
}

} // namespace

QString CriterionGenerator::condition(int depth) {
    if (depth <= 0) return comparison(0);
    const auto part = [&] { return u'(' + condition(depth - 1 - below(2)) + u')'; };
    switch (below(12)) {
    case 0: return u"Not "_s + part();
    case 1: return part() + u" Xor "_s + part();
    case 2: return part() + u" Eqv "_s + part();
    case 3: return part() + u" Imp "_s + part();
    case 4:
    case 5: return part() + u" And "_s + part() + (chance(30) ? u" And "_s + part() : QString());
    case 6:
    case 7: return part() + u" Or "_s + part() + (chance(30) ? u" Or "_s + part() : QString());
    default: return comparison(depth);
    }
}

QString CriterionGenerator::sortOrder() {
    QStringList terms;
    for (int count = 1 + below(3); count > 0; --count) {
        const QString term = expression(anyKind(), below(3));
        bool isPlace = false; // a whole number, in parentheses too, would be the place of a column
        QString(term).remove(u'(').remove(u')').toInt(&isPlace);
        terms.append((isPlace ? oneOf(textColumns) : term) + (chance(50) ? u" DESC"_s : QString()));
    }
    return terms.join(u", "_s);
}

QString CriterionGenerator::comparison(int depth) {
    const Kind kind = anyKind();
    const auto operand = [&] { return expression(chance(90) ? kind : anyKind(), depth - 1); };
    const QString negation = chance(20) ? u"Not "_s : QString();
    static const QString operators[] = {u" = "_s, u" <> "_s, u" < "_s, u" <= "_s, u" > "_s, u" >= "_s};
    switch (below(11)) {
    case 0: return operand() + u" Is "_s + negation + u"Null"_s;
    case 1: {
        QString items = operand();
        for (int count = chance(20) ? below(15) : below(4); count > 0; --count)
            items += u", "_s + (chance(70) ? leaf(kind) : operand());
        return operand() + u' ' + negation + u"In ("_s + items + u')';
    }
    case 2: return operand() + u' ' + negation + u"Between "_s + operand() + u" And "_s + operand();
    case 3:
    case 4: return operand() + u' ' + negation + u"Like "_s + (chance(80) ? pattern() : expression(Text, depth - 1));
    case 5: return operand();
    default: return operand() + oneOf(operators) + operand();
    }
}

QString CriterionGenerator::expression(Kind kind, int depth) {
    if (depth <= 0 || chance(25)) return leaf(kind);
    switch (kind) {
    case Number: return number(depth);
    case Text: return text(depth);
    default: return date(depth);
    }
}

QString CriterionGenerator::number(int depth) {
    static const QString operators[] = {u" + "_s, u" - "_s, u" * "_s, u" / "_s, u" \\ "_s, u" Mod "_s, u" ^ "_s};
    switch (below(8)) {
    case 0: return u"-("_s + expression(chance(85) ? Number : anyKind(), depth - 1) + u')';
    case 1: return u'(' + expression(Date, depth - 1) + u" - "_s + expression(Date, depth - 1) + u')';
    case 2: return u'(' + condition(depth - 1) + u')';
    case 3:
    case 4:
    case 5: return call(Number, depth);
    default:
        return u'(' + expression(Number, depth - 1) + oneOf(operators) +
               expression(chance(85) ? Number : anyKind(), depth - 1) + u')';
    }
}

QString CriterionGenerator::text(int depth) {
    if (chance(60)) return call(Text, depth);
    return u'(' + expression(anyKind(), depth - 1) + (chance(70) ? u" & "_s : u" + "_s) +
           expression(chance(70) ? Text : anyKind(), depth - 1) + u')';
}

QString CriterionGenerator::date(int depth) {
    if (chance(50)) return call(Date, depth);
    return u'(' + expression(Date, depth - 1) + (chance(50) ? u" + "_s : u" - "_s) + expression(Number, depth - 1) +
           u')';
}

QString CriterionGenerator::call(Kind kind, int depth) {
    const char wanted = "NTD"[kind];
    const Signature* signature = nullptr;
    do
        signature = &oneOf(signatures);
    while (signature->result != wanted);
    QStringList arguments;
    for (const char* code = signature->arguments; *code; ++code)
        arguments.append(argument(QLatin1Char(*code), depth - 1));
    return QString::fromLatin1(signature->name) + u'(' + arguments.join(u", "_s) + u')';
}

QString CriterionGenerator::argument(QChar code, int depth) {
    if (chance(5)) return expression(anyKind(), depth);
    switch (code.unicode()) {
    case u'C': return condition(depth);
    case u'I': return chance(80) ? QString::number(below(12) - 1) : expression(Number, depth);
    case u'F': return oneOf(formats);
    case u'U': return oneOf(intervals);
    case u'T': return expression(Text, depth);
    case u'D': return expression(Date, depth);
    default: return expression(Number, depth);
    }
}

QString CriterionGenerator::leaf(Kind kind) {
    if (chance(4)) return u"Null"_s;
    if (chance(45)) return literal(kind);
    switch (kind) {
    case Number: return oneOf(numberColumns);
    case Text: return oneOf(textColumns);
    default: return oneOf(dateColumns);
    }
}

QString CriterionGenerator::literal(Kind kind) {
    switch (kind) {
    case Number: return oneOf(numberLiterals);
    case Text: return textLiteral();
    default: return oneOf(dateLiterals);
    }
}

QString CriterionGenerator::textLiteral() {
    QString value = oneOf(words);
    if (chance(25)) value += oneOf(words);
    return quoted(value);
}

QString CriterionGenerator::pattern() {
    if (chance(15)) return textLiteral();
    QString value;
    for (int count = below(5); count >= 0; --count)
        value += chance(70) ? oneOf(patternPieces) : oneOf(words);
    return quoted(value);
}

QByteArray CriterionGenerator::tableText(int rows) {
    QByteArray native =
        "BEGIN; CREATE TABLE R (Nr INTEGER PRIMARY KEY, Ja YESNO, Ganz LONG, Zahl DOUBLE, Preis CURRENCY,"
        "Name VARCHAR(50), \"An/Um\" TEXT, Am DATETIME, Bis DATETIME);";
    for (int row = 1; row <= rows; ++row)
        native += nativeRow(row);
    return native + "COMMIT;";
}

QByteArray CriterionGenerator::nativeRow(int number) {
    static const char* const longs[] = {"0", "1", "-1", "7", "100", "2147483647", "-2147483648", "65", "36526"};
    static const char* const doubles[] = {"0.0", "0.1", "-2.5", "1e300", "-1e-300", "36526.75", "3.0", "1e15", "0.5"};
    static const char* const amounts[] = {"0", "12.5", "-0.0001", "99.99", "100000.1234", "2"};
    static const char* const dates[] = {"1899-12-30 00:00:00", "1899-12-29 18:00:00", "1899-12-29 06:00:00",
                                        "2000-01-01 00:00:00", "2000-01-01 18:00:00", "2004-02-29 12:30:15",
                                        "9999-12-31 23:59:59", "0100-01-01 00:00:00", "1899-12-30 06:30:00"};
    const auto orNull = [&](const QByteArray& value) { return chance(15) ? QByteArray("NULL") : value; };
    const auto word = [&] {
        QString value = oneOf(words);
        if (chance(30)) value += oneOf(words);
        return quoted(value).toUtf8();
    };
    const QByteArrayList values = {QByteArray::number(number),
                                   orNull(chance(50) ? "-1" : "0"),
                                   orNull(oneOf(longs)),
                                   orNull(oneOf(doubles)),
                                   orNull(oneOf(amounts)),
                                   orNull(word()),
                                   orNull(word()),
                                   orNull('\'' + QByteArray(oneOf(dates)) + '\''),
                                   orNull('\'' + QByteArray(oneOf(dates)) + '\'')};
    return "INSERT INTO R VALUES (" + values.join(", ") + ");";
}

} // namespace dao
