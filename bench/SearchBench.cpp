// The pool's search by name over 1,000,000 rows, beside a plain loop that compares them without case.
#include "bench/BrowserOnPool.h"
#include "bench/Row.h"
#include "core/NameSearch.h"
#include "tests/support/BrowserAccess.h"

#include <algorithm>

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

double loopSeconds(const std::vector<QString>& names, const QString& term, std::ptrdiff_t& found) {
    return medianSeconds(Runs, [&] {
        found = std::ranges::count_if(
            names, [&](const QString& name) { return name.compare(term, Qt::CaseInsensitive) == 0; });
    });
}

} // namespace

// The slower one of a whole name and of a pattern that must look at every letter of every name.
Result searchRow() {
    BrowserOnPool host;
    const mkl::ArticleFind& find = *mkl::BrowserAccess::hub(host.browser).articleFind;
    const std::vector<QString> names = namesOf(host.list());
    const QString name = names.at(names.size() / 2).toUpper();
    const QString pattern = u'*' + name.sliced(name.size() / 2) + u'*';
    const auto walk = [&](const QString& term, std::ptrdiff_t& found) {
        return medianSeconds(Runs, [&] { found = std::ssize(find.hits(mkl::NameSearch(term))); });
    };
    std::ptrdiff_t byLoop = 0, byName = 0, byPattern = 0;
    Result result;
    result.work = u"search of 1,000,000 names in the pool, by a name or by a pattern"_s;
    result.unit = u"ms"_s;
    result.goal = 3;
    result.baselines = {{u"loop of QString::compare"_s, 1000 * loopSeconds(names, name, byLoop)}};
    result.ours = 1000 * std::max(walk(name, byName), walk(pattern, byPattern));
    if (byName != byLoop || byName == 0) qFatal("the hits differ");
    if (byPattern < byName) qFatal("the pattern finds less than the name");
    return result;
}

} // namespace bench
