// The pool's search by name over 1,000,000 rows, beside a plain loop that compares them without case.
#include "bench/BrowserOnPool.h"
#include "bench/Row.h"
#include "core/NameSearch.h"
#include "tests/support/BrowserAccess.h"

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Runs = 5;

std::vector<QString> namesOf(const mkl::ListView& list) {
    std::vector<QString> names;
    for (const mkl::Ref<mkl::ListItem>& item : list.ListItems())
        names.push_back(item->SubItems(1));
    return names;
}

/// The search beside a loop that asks every name the same question.
template<class Asks>
Result searchBeside(const QString& loop, const QString& work, const std::function<QString(const QString&)>& termOf,
                    Asks&& asks) {
    BrowserOnPool host;
    const mkl::ArticleFind& find = *mkl::BrowserAccess::hub(host.browser).articleFind;
    const std::vector<QString> names = namesOf(host.list());
    const QString name = names.at(names.size() / 2).toUpper();
    const mkl::NameSearch search(termOf(name));
    std::ptrdiff_t found = 0, foundByLoop = 0;
    Result result;
    result.work = work;
    result.unit = u"ms"_s;
    result.goal = 3;
    result.ours = 1000 * medianSeconds(Runs, [&] { found = std::ssize(find.hits(search)); });
    const double seconds = medianSeconds(Runs, [&] {
        foundByLoop = std::ranges::count_if(names, [&](const QString& each) { return asks(each, name); });
    });
    result.baselines = {{loop, 1000 * seconds}};
    if (found != foundByLoop || found == 0) qFatal("the hits differ");
    return result;
}

QString secondHalf(const QString& name) {
    return name.sliced(name.size() / 2);
}

} // namespace

Result searchRow() {
    return searchBeside(
        u"loop of QString::compare"_s, u"search of 1,000,000 names in the pool, by a whole name"_s,
        [](const QString& name) { return name; },
        [](const QString& each, const QString& name) { return each.compare(name, Qt::CaseInsensitive) == 0; });
}

Result searchPatternRow() {
    return searchBeside(
        u"loop of QString::contains"_s, u"the same, by a pattern that looks at every letter"_s,
        [](const QString& name) { return u'*' + secondHalf(name) + u'*'; },
        [](const QString& each, const QString& name) { return each.contains(secondHalf(name), Qt::CaseInsensitive); });
}

} // namespace bench
