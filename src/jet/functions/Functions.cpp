#include "jet/functions/Functions.h"

#include "jet/functions/FunctionBodies.h"

#include <algorithm>

namespace jet {

namespace {

using Types = std::span<const ColumnType>;

template<ColumnType type>
ColumnType always(Types /*arguments*/) {
    return type;
}

ColumnType ofFirst(Types arguments) {
    return arguments.empty() ? ColumnType::Unknown : arguments[0];
}

// Abs, Int and the like leave a number what it is; of a text they make one.
ColumnType ofNumber(Types arguments) {
    switch (const ColumnType type = ofFirst(arguments)) {
    case ColumnType::Boolean: return ColumnType::Int;
    case ColumnType::Text: return ColumnType::Double;
    default: return type;
    }
}

// Without a second argument an empty text may stand for the first.
ColumnType ofNz(Types arguments) {
    return arguments.size() == 2 && arguments[0] == arguments[1] ? arguments[0] : ColumnType::Unknown;
}

constexpr auto yesNo = always<ColumnType::Boolean>;
constexpr auto whole = always<ColumnType::Int>;
constexpr auto floating = always<ColumnType::Double>;
constexpr auto currency = always<ColumnType::Currency>;
constexpr auto date = always<ColumnType::Date>;
constexpr auto text = always<ColumnType::Text>;

template<Implementation implementation>
mkl::Variant nullPasses(Arguments arguments) {
    for (const mkl::Variant& argument : arguments)
        if (argument.isNull()) return {};
    return implementation(arguments);
}

using ResultType = ColumnType (*)(Types);

// A function whose result is Null as soon as one of its arguments is.
template<Implementation implementation>
constexpr Function row(QStringView name, const char* nativeName, int least, int most, ResultType type) {
    return {name, nativeName, least, most, type, true, false, nullPasses<implementation>};
}

// A function that sees Null itself.
template<Implementation implementation>
constexpr Function seesNull(QStringView name, const char* nativeName, int least, int most, ResultType type) {
    return {name, nativeName, least, most, type, true, false, implementation};
}

template<Implementation implementation>
constexpr Function changing(QStringView name, const char* nativeName, int most, ResultType type) {
    return {name, nativeName, 0, most, type, false, false, nullPasses<implementation>};
}

// Which of its arguments are results, the binder knows.
constexpr Function lazy(QStringView name, const char* nativeName, int least, int most) {
    return {name, nativeName, least, most, always<ColumnType::Unknown>, true, true, nullptr};
}

namespace f = body;
constexpr int any = Function::anyNumber;

constexpr Function table[] = {
    row<f::abs>(u"Abs", "mkl_abs", 1, 1, ofNumber),
    row<f::asc>(u"Asc", "mkl_asc", 1, 1, whole),
    row<f::atn>(u"Atn", "mkl_atn", 1, 1, floating),
    seesNull<f::cBool>(u"CBool", "mkl_cbool", 1, 1, yesNo),
    seesNull<f::cByte>(u"CByte", "mkl_cbyte", 1, 1, whole),
    seesNull<f::cCur>(u"CCur", "mkl_ccur", 1, 1, currency),
    seesNull<f::cDate>(u"CDate", "mkl_cdate", 1, 1, date),
    seesNull<f::cDbl>(u"CDbl", "mkl_cdbl", 1, 1, floating),
    lazy(u"Choose", "mkl_choose", 2, any),
    row<f::chr>(u"Chr", "mkl_chr", 1, 1, text),
    seesNull<f::cInt>(u"CInt", "mkl_cint", 1, 1, whole),
    seesNull<f::cLng>(u"CLng", "mkl_clng", 1, 1, whole),
    row<f::cos>(u"Cos", "mkl_cos", 1, 1, floating),
    seesNull<f::cSng>(u"CSng", "mkl_csng", 1, 1, floating),
    seesNull<f::cStr>(u"CStr", "mkl_cstr", 1, 1, text),
    seesNull<f::cVar>(u"CVar", "mkl_cvar", 1, 1, ofFirst),
    changing<f::date>(u"Date", "mkl_date", 0, date),
    row<f::dateAdd>(u"DateAdd", "mkl_dateadd", 3, 3, date),
    row<f::dateDiff>(u"DateDiff", "mkl_datediff", 3, 5, whole),
    row<f::datePart>(u"DatePart", "mkl_datepart", 2, 4, whole),
    row<f::dateSerial>(u"DateSerial", "mkl_dateserial", 3, 3, date),
    row<f::dateValue>(u"DateValue", "mkl_datevalue", 1, 1, date),
    row<f::day>(u"Day", "mkl_day", 1, 1, whole),
    row<f::exp>(u"Exp", "mkl_exp", 1, 1, floating),
    row<f::fix>(u"Fix", "mkl_fix", 1, 1, ofNumber),
    seesNull<f::format>(u"Format", "mkl_format", 1, 4, text),
    row<f::hex>(u"Hex", "mkl_hex", 1, 1, text),
    row<f::hour>(u"Hour", "mkl_hour", 1, 1, whole),
    lazy(u"IIf", "mkl_iif", 3, 3),
    row<f::inStr>(u"InStr", "mkl_instr", 2, 4, whole),
    row<f::inStrRev>(u"InStrRev", "mkl_instrrev", 2, 4, whole),
    row<f::integer>(u"Int", "mkl_int", 1, 1, ofNumber),
    seesNull<f::isDate>(u"IsDate", "mkl_isdate", 1, 1, yesNo),
    seesNull<f::isNull>(u"IsNull", "mkl_isnull", 1, 1, yesNo),
    seesNull<f::isNumeric>(u"IsNumeric", "mkl_isnumeric", 1, 1, yesNo),
    row<f::lCase>(u"LCase", "mkl_lcase", 1, 1, text),
    row<f::left>(u"Left", "mkl_left", 2, 2, text),
    row<f::len>(u"Len", "mkl_len", 1, 1, whole),
    row<f::log>(u"Log", "mkl_log", 1, 1, floating),
    row<f::lTrim>(u"LTrim", "mkl_ltrim", 1, 1, text),
    row<f::mid>(u"Mid", "mkl_mid", 2, 3, text),
    row<f::minute>(u"Minute", "mkl_minute", 1, 1, whole),
    row<f::month>(u"Month", "mkl_month", 1, 1, whole),
    changing<f::now>(u"Now", "mkl_now", 0, date),
    seesNull<f::nz>(u"Nz", "mkl_nz", 1, 2, ofNz),
    row<f::oct>(u"Oct", "mkl_oct", 1, 1, text),
    row<f::partition>(u"Partition", "mkl_partition", 4, 4, text),
    row<f::replace>(u"Replace", "mkl_replace", 3, 6, text),
    row<f::right>(u"Right", "mkl_right", 2, 2, text),
    changing<f::rnd>(u"Rnd", "mkl_rnd", 1, floating),
    row<f::round>(u"Round", "mkl_round", 1, 2, ofNumber),
    row<f::rTrim>(u"RTrim", "mkl_rtrim", 1, 1, text),
    row<f::second>(u"Second", "mkl_second", 1, 1, whole),
    row<f::sgn>(u"Sgn", "mkl_sgn", 1, 1, whole),
    row<f::sin>(u"Sin", "mkl_sin", 1, 1, floating),
    row<f::space>(u"Space", "mkl_space", 1, 1, text),
    row<f::sqr>(u"Sqr", "mkl_sqr", 1, 1, floating),
    row<f::str>(u"Str", "mkl_str", 1, 1, text),
    row<f::strComp>(u"StrComp", "mkl_strcomp", 2, 3, whole),
    row<f::string>(u"String", "mkl_string", 2, 2, text),
    row<f::strReverse>(u"StrReverse", "mkl_strreverse", 1, 1, text),
    lazy(u"Switch", "mkl_switch", 2, any),
    row<f::tan>(u"Tan", "mkl_tan", 1, 1, floating),
    changing<f::time>(u"Time", "mkl_time", 0, date),
    row<f::timeSerial>(u"TimeSerial", "mkl_timeserial", 3, 3, date),
    row<f::timeValue>(u"TimeValue", "mkl_timevalue", 1, 1, date),
    row<f::trim>(u"Trim", "mkl_trim", 1, 1, text),
    row<f::uCase>(u"UCase", "mkl_ucase", 1, 1, text),
    seesNull<f::val>(u"Val", "mkl_val", 1, 1, floating),
    row<f::weekday>(u"Weekday", "mkl_weekday", 1, 2, whole),
    row<f::year>(u"Year", "mkl_year", 1, 1, whole),
};

bool precedes(QStringView a, QStringView b) {
    return a.compare(b, Qt::CaseInsensitive) < 0;
}

} // namespace

std::span<const Function> functions() {
    return table;
}

const Function* findFunction(QStringView name) {
    const auto found = std::ranges::lower_bound(table, name, precedes, &Function::name);
    return found != std::end(table) && !precedes(name, found->name) ? found : nullptr;
}

} // namespace jet
