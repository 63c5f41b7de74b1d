#include "PartsOfWork.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

PartsOfWork::PartsOfWork(const CatalogueRows& before)
    : before_(before)
    , now_(before)
    , nextKey_(before.assignments.empty() ? 1 : before.assignments.rbegin()->first + 1) {}

QList<Long> PartsOfWork::keysOf(Long category) const {
    QList<Long> keys;
    for (const auto& [key, row] : now_.assignments)
        if (row.category == category) keys.append(key);
    std::ranges::stable_sort(keys, {}, [this](Long key) { return now_.assignments.at(key).order; });
    return keys;
}

Long PartsOfWork::count(Long category) const {
    return static_cast<Long>(keysOf(category).size());
}

QList<Long> PartsOfWork::articlesAt(Long category, const QList<Long>& places) const {
    const QList<Long> keys = keysOf(category);
    QList<Long> articles;
    for (const Long place : places)
        articles.append(now_.assignments.at(keys.at(place - 1)).article);
    return articles;
}

void PartsOfWork::run(Procedure procedure) {
    for (const Write& write : procedure.writes)
        write(now_);
    procedures_.push_back(std::move(procedure));
}

void PartsOfWork::openGap(Long category, Long start, Long gap) {
    number(category, start, start + gap, false);
}

void PartsOfWork::number(Long category, Long start, Long first, bool isPartOfFormer) {
    Procedure procedure{u"Cat_RenumberArticles"_s, {}, isPartOfFormer};
    Long order = first;
    for (const Long key : keysOf(category)) {
        if (now_.assignments.at(key).order < start) continue;
        procedure.writes.push_back([key, order](CatalogueRows& rows) {
            rows.assignments.at(key).order = order;
            rows.assignments.at(key).changed = true;
        });
        ++order;
    }
    run(std::move(procedure));
}

void PartsOfWork::add(Long category, Long start, const QList<Long>& articles) {
    Procedure procedure{u"Cat_AddArticles"_s, {}};
    Long order = start;
    for (const Long article : articles) {
        procedure.writes.push_back([key = nextKey_++, row = Assignment{article, category, order++, true}](
                                       CatalogueRows& rows) { rows.assignments[key] = row; });
    }
    run(std::move(procedure));
}

void PartsOfWork::remove(Long category, const QList<Long>& articles) {
    Procedure procedure{u"Cat_DeleteArticles"_s, {}};
    for (const Long key : keysOf(category))
        if (articles.contains(now_.assignments.at(key).article))
            procedure.writes.push_back([key](CatalogueRows& rows) { rows.assignments.erase(key); });
    run(std::move(procedure));
    number(category, 0, 1, true);
}

void PartsOfWork::make(Long key, const CategoryState& category) {
    run({u"NewCategory"_s, {[=](CatalogueRows& rows) { rows.categories[key] = category; }}});
}

void PartsOfWork::drop(const QList<Long>& categories) {
    Procedure procedure{u"DeleteCategory"_s, {}};
    for (const Long key : categories)
        procedure.writes.push_back([key](CatalogueRows& rows) {
            rows.categories.erase(key);
            std::erase_if(rows.assignments, [key](const auto& row) { return row.second.category == key; });
        });
    run(std::move(procedure));
}

void PartsOfWork::orderLevel(const QList<Long>& categories) {
    Procedure procedure{u"OrderCategory"_s, {}};
    Long order = 1;
    for (const Long key : categories)
        procedure.writes.push_back([key, position = order++](CatalogueRows& rows) {
            rows.categories.at(key).order = position;
            rows.categories.at(key).changed = true;
        });
    run(std::move(procedure));
}

void PartsOfWork::setParent(Long category, Long parent) {
    run({u"EditParent"_s, {[=](CatalogueRows& rows) {
             rows.categories.at(category).parent = parent;
             rows.categories.at(category).changed = true;
         }}});
}

void PartsOfWork::activate(const QList<Long>& categories, bool active) {
    Procedure procedure{u"TVActivate"_s, {}};
    for (const Long key : categories)
        procedure.writes.push_back([=](CatalogueRows& rows) { rows.categories.at(key).active = active; });
    run(std::move(procedure));
}

QList<CatalogueRows> PartsOfWork::afterFailureOf(const QString& name) const {
    QList<CatalogueRows> states = {now_};
    for (const Procedure& failing : procedures_) {
        if (failing.name != name) continue;
        for (size_t written = 0; written < failing.writes.size(); ++written) {
            CatalogueRows rows = before_;
            bool formerFailed = false;
            for (const Procedure& procedure : procedures_) {
                const bool isFailing = &procedure == &failing;
                const size_t count = isFailing                                  ? written
                                     : formerFailed && procedure.isPartOfFormer ? 0
                                                                                : procedure.writes.size();
                for (size_t i = 0; i < count; ++i)
                    procedure.writes[i](rows);
                formerFailed = isFailing;
            }
            states.append(rows);
        }
    }
    return states;
}

} // namespace mkl
