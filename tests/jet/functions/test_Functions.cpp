#include "jet/functions/Functions.h"

#include "jet/FunctionCall.h"

#include <algorithm>
#include <set>

using namespace jet;
using namespace Qt::StringLiterals;
using namespace values;
using mkl::Variant;

TEST(Functions, tableIsSortedAndItsNamesAreUnique) {
    std::set<std::string> nativeNames;
    const auto table = functions();
    for (size_t i = 0; i < table.size(); ++i) {
        EXPECT_TRUE(nativeNames.insert(table[i].nativeName).second) << table[i].nativeName;
        EXPECT_EQ(QString::fromLatin1(table[i].nativeName), u"mkl_"_s + table[i].name.toString().toLower());
        if (i > 0) {
            EXPECT_LT(table[i - 1].name.compare(table[i].name, Qt::CaseInsensitive), 0) << table[i].nativeName;
        }
    }
}

TEST(Functions, namesAreFoundInEitherCase) {
    for (const Function& function : functions()) {
        EXPECT_EQ(findFunction(function.name.toString().toUpper()), &function);
        EXPECT_EQ(findFunction(function.name.toString().toLower()), &function);
    }
    for (const QStringView name : {u"", u"Lef", u"Leftt", u"sqlite_version", u"load_extension", u"pg_sleep", u"DLookup",
                                   u"mkl_left", u"Zzz", u"Aaa"})
        EXPECT_EQ(findFunction(name), nullptr) << name.toString().toStdString();
}

TEST(Functions, everyOneOfTheDialectIsThere) {
    const QString names =
        u"Abs Asc Atn CBool CByte CCur CDate CDbl CInt CLng CSng CStr CVar Choose Chr Cos Date DateAdd "
        "DateDiff DatePart DateSerial DateValue Day Exp Fix Format Hex Hour IIf InStr Int IsDate "
        "IsNull IsNumeric LCase Left Len Log LTrim Mid Minute Month Now Oct Partition Right Rnd "
        "RTrim Second Sgn Sin Space Sqr Str StrComp String Switch Tan Time TimeSerial TimeValue "
        "Trim UCase Val Weekday Year Nz Replace Round StrReverse InStrRev"_s;
    for (const QString& name : names.split(u' '))
        EXPECT_NE(findFunction(name), nullptr) << name.toStdString();
    EXPECT_EQ(names.count(u' ') + 1, static_cast<qsizetype>(functions().size()));
}

TEST(Functions, countsOfArguments) {
    EXPECT_FALSE(findFunction(u"Left")->takes(1));
    EXPECT_TRUE(findFunction(u"Left")->takes(2));
    EXPECT_FALSE(findFunction(u"Left")->takes(3));
    EXPECT_TRUE(findFunction(u"Now")->takes(0));
    EXPECT_TRUE(findFunction(u"Switch")->takes(20));
}

TEST(Functions, onlyTheLazyOnesHaveNoImplementation) {
    const std::set<QString> lazy{u"IIf"_s, u"Choose"_s, u"Switch"_s};
    const std::set<QString> changing{u"Now"_s, u"Date"_s, u"Time"_s, u"Rnd"_s};
    for (const Function& function : functions()) {
        const QString name = function.name.toString();
        EXPECT_EQ(function.lazy, lazy.contains(name)) << function.nativeName;
        EXPECT_EQ(function.implementation == nullptr, function.lazy) << function.nativeName;
        EXPECT_EQ(function.deterministic, !changing.contains(name)) << function.nativeName;
    }
}

TEST(Functions, resultTypes) {
    using Type = ColumnType;
    struct Row {
        QStringView name;
        std::vector<Type> arguments;
        Type result;
    };
    const Row rows[] = {
        {u"Left", {Type::Int, Type::Int}, Type::Text},
        {u"Abs", {Type::Currency}, Type::Currency},
        {u"Abs", {Type::Boolean}, Type::Int},
        {u"Int", {Type::Text}, Type::Double},
        {u"Int", {Type::Unknown}, Type::Unknown},
        {u"Now", {}, Type::Date},
        {u"Rnd", {}, Type::Double},
        {u"IIf", {Type::Boolean, Type::Text, Type::Text}, Type::Unknown}, // the binder looks at the branches
        {u"Nz", {Type::Int, Type::Int}, Type::Int},
        {u"Nz", {Type::Int, Type::Text}, Type::Unknown},
        {u"Nz", {Type::Int}, Type::Unknown},
        {u"CVar", {Type::Date}, Type::Date},
    };
    for (const Row& row : rows)
        EXPECT_EQ(findFunction(row.name)->resultType(row.arguments), row.result) << row.name.toString().toStdString();
}

TEST(Functions, nullPassesThroughAllButThoseThatAskForIt) {
    const std::set<QString> others{u"CBool"_s,  u"CByte"_s,  u"CCur"_s, u"CDate"_s,     u"CDbl"_s,
                                   u"CInt"_s,   u"CLng"_s,   u"CSng"_s, u"CStr"_s,      u"Format"_s,
                                   u"IsDate"_s, u"IsNull"_s, u"Nz"_s,   u"IsNumeric"_s, u"Val"_s};
    for (const Function& function : functions()) {
        if (function.lazy || function.maxArguments == 0 || others.contains(function.name.toString())) continue;
        const FunctionArguments nulls(static_cast<size_t>(std::max(function.minArguments, 1)));
        EXPECT_EQ(function.implementation(nulls), null) << function.nativeName;
    }
    checkErrors({{u"CBool", {null}, 94},
                 {u"CByte", {null}, 94},
                 {u"CCur", {null}, 94},
                 {u"CDate", {null}, 94},
                 {u"CDbl", {null}, 94},
                 {u"CInt", {null}, 94},
                 {u"CLng", {null}, 94},
                 {u"CSng", {null}, 94},
                 {u"CStr", {null}, 94},
                 {u"Val", {null}, 94}});
}
