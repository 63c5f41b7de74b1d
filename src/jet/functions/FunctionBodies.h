#pragma once
// What the functions of the table do. Unless the table says otherwise a Null among the arguments has been
// answered with Null before the body is reached.
#include "jet/functions/Functions.h"

namespace jet::body {

using mkl::Variant;

// ConversionFunctions.cpp
Variant cBool(Arguments arguments);
Variant cByte(Arguments arguments);
Variant cCur(Arguments arguments);
Variant cDate(Arguments arguments);
Variant cDbl(Arguments arguments);
Variant cInt(Arguments arguments);
Variant cLng(Arguments arguments);
Variant cSng(Arguments arguments);
Variant cStr(Arguments arguments);
Variant cVar(Arguments arguments);
Variant isDate(Arguments arguments);
Variant isNull(Arguments arguments);
Variant isNumeric(Arguments arguments);
Variant nz(Arguments arguments);
Variant str(Arguments arguments);
Variant val(Arguments arguments);

// DateFunctions.cpp
Variant date(Arguments arguments);
Variant dateAdd(Arguments arguments);
Variant dateDiff(Arguments arguments);
Variant datePart(Arguments arguments);
Variant dateSerial(Arguments arguments);
Variant dateValue(Arguments arguments);
Variant day(Arguments arguments);
Variant hour(Arguments arguments);
Variant minute(Arguments arguments);
Variant month(Arguments arguments);
Variant now(Arguments arguments);
Variant second(Arguments arguments);
Variant time(Arguments arguments);
Variant timeSerial(Arguments arguments);
Variant timeValue(Arguments arguments);
Variant weekday(Arguments arguments);
Variant year(Arguments arguments);

// FormatFunction.cpp
Variant format(Arguments arguments);

// NumberFunctions.cpp
Variant abs(Arguments arguments);
Variant atn(Arguments arguments);
Variant cos(Arguments arguments);
Variant exp(Arguments arguments);
Variant fix(Arguments arguments);
Variant hex(Arguments arguments);
Variant integer(Arguments arguments);
Variant log(Arguments arguments);
Variant oct(Arguments arguments);
Variant partition(Arguments arguments);
Variant rnd(Arguments arguments);
Variant round(Arguments arguments);
Variant sgn(Arguments arguments);
Variant sin(Arguments arguments);
Variant sqr(Arguments arguments);
Variant tan(Arguments arguments);

// TextFunctions.cpp
Variant asc(Arguments arguments);
Variant chr(Arguments arguments);
Variant inStr(Arguments arguments);
Variant inStrRev(Arguments arguments);
Variant lCase(Arguments arguments);
Variant left(Arguments arguments);
Variant len(Arguments arguments);
Variant lTrim(Arguments arguments);
Variant mid(Arguments arguments);
Variant replace(Arguments arguments);
Variant right(Arguments arguments);
Variant rTrim(Arguments arguments);
Variant space(Arguments arguments);
Variant strComp(Arguments arguments);
Variant string(Arguments arguments);
Variant strReverse(Arguments arguments);
Variant trim(Arguments arguments);
Variant uCase(Arguments arguments);

/// The argument at that place, or what it is when left out.
inline mkl::Long longOr(Arguments arguments, size_t place, mkl::Long otherwise) {
    return place < arguments.size() ? arguments[place].toLong() : otherwise;
}

/// A date or the text of one (13 where it is none).
double dateOf(const Variant& value);

} // namespace jet::body
