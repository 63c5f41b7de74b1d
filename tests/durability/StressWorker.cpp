#include "StressWorker.h"

#include "browser/dialogs/frmArticleNewPos.h"
#include "browser/dialogs/frmNewPosition.h"
#include "controls/ListView.h"
#include "dao/Errors.h"
#include "dao/FaultPoints.h"

#include <array>

namespace mkl {

using namespace Qt::StringLiterals;

QString StressWorker::counter(Long groups) {
    QString statements = u"CREATE TABLE Stand (Nr INTEGER PRIMARY KEY, Zahl INTEGER);"_s;
    for (Long group = 1; group <= groups; ++group)
        statements += u"INSERT INTO Stand VALUES (%1, 0);"_s.arg(group);
    return statements;
}

StressWorker::StressWorker(ScriptedWorld& world, const QString& file, StressRole role, quint32 seed)
    : world_(world)
    , host_(world, file, {.busyTimeoutMilliseconds = 60'000})
    , role_(std::move(role))
    , seed_(seed) {
    host_.show(role_.categories.front());
    pairs_ = storedPairs();
}

StressWorker::~StressWorker() = default;

void StressWorker::begin(int round, quint32 step) {
    std::seed_seq sequence{seed_, static_cast<quint32>(role_.who), static_cast<quint32>(round), step};
    random_.seed(sequence);
    world_.user.answers.clear();
    world_.forms.answers.clear();
    host_.reports().clear();
    step_ = {.who = role_.who, .round = round};
}

qint64 StressWorker::commits() const {
    const QString sql = u"SELECT Zahl FROM Stand WHERE Nr=%1"_s.arg(role_.group);
    return host_.database().OpenRecordset(sql, dao::dbOpenForwardOnly)->value(0).toLong();
}

StressStep StressWorker::read(int round) {
    begin(round, 0);
    step_.isRead = true;
    category_ = someCategory();
    do {
        step_.from = commits();
        host_.browser().setSelected(acbPaneCategoryTree, category_);
        step_.to = commits();
    } while (step_.from != step_.to);
    return step_;
}

StressStep StressWorker::act(int round) {
    const qint64 asRead = step_.to;
    begin(round, 1);
    step_.from = step_.to = asRead; // where it comes to no transaction
    hasBegun_ = false;
    dao::FaultPoints::setObserver([this](QByteArrayView native) { observe(native); });
    using Action = void (StressWorker::*)();
    static constexpr std::array<Action, 10> actions = {
        &StressWorker::moveRow,      &StressWorker::moveRow,      &StressWorker::swapRows,
        &StressWorker::sortRows,     &StressWorker::addArticles,  &StressWorker::addArticles,
        &StressWorker::addArticles,  &StressWorker::moveArticles, &StressWorker::deleteRows,
        &StressWorker::moveArticles,
    };
    (this->*actions[static_cast<size_t>(pick(actions.size()))])();
    dao::FaultPoints::setObserver({});
    noteFailures();
    return step_;
}

// A position may be chosen that the target has not: that is told with a number of our own, and what wanted to go on
// from there has no row then. Others may also have taken the row away that its screen still shows.
void StressWorker::noteFailures() {
    const QList<ErrorReport>& reports = host_.reports();
    for (qsizetype i = 0; i < reports.size(); ++i) {
        const bool isBehindNotice = i > 0 && reports[i - 1].code != 0;
        const bool lacksRow = reports[i].number == dao::err::NoCurrentRecord;
        const bool lacksItem = reports[i].number == err::ElementNotFound; // in the list that was read again
        const bool isStale = role_.sharesCategories && (lacksRow || lacksItem);
        if (reports[i].code != 0 || isStale || (lacksRow && isBehindNotice)) continue;
        ++step_.reports;
        step_.failure = reports[i].number;
    }
}

// A transaction sees the commits before it, whether it is rolled back or counts as one more.
void StressWorker::observe(QByteArrayView native) {
    if (std::exchange(hasBegun_, native.startsWith("BEGIN"))) step_.from = step_.to = commits();
    if (native != "COMMIT" || step_.commits()) return;
    host_.database().Execute(u"UPDATE Stand SET Zahl=Zahl+1 WHERE Nr=%1"_s.arg(role_.group), dao::dbFailOnError);
    step_.to = commits();
}

bool StressWorker::isMine(Long article) const {
    return role_.articles == StressRole::Articles::All || article % role_.programs == role_.who;
}

/// The places of the list's rows with its own articles.
QList<Long> StressWorker::ownRows() const {
    QList<Long> places;
    for (Long place = 1; place <= host_.list().ListItems().Count(); ++place)
        if (isMine(host_.row(place)->SubItems(1).toInt())) places.append(place);
    return places;
}

void StressWorker::moveRow() {
    const Long count = host_.list().ListItems().Count();
    if (count < 2) return;
    const Long wanted = host_.row(1 + pick(count))->Text().toInt();
    host_.selectRows({1 + pick(count)});
    world_.forms.answers = {[wanted](QDialog& form) {
        auto& editor = static_cast<frmNewPosition&>(form);
        editor.UD.setMaximum(1'000'000);
        editor.UD.setValue(wanted);
        editor.chkCancel.setValue(0);
    }};
    host_.hub().articleOrder->kLV_NewPosition();
}

void StressWorker::swapRows() {
    const Long count = host_.list().ListItems().Count();
    if (count < 2) return;
    const Long one = 1 + pick(count), other = 1 + pick(count);
    host_.hub().articleOrder->LV_SwapPositions(host_.assignmentAt(one), host_.row(other)->Text().toInt(),
                                               host_.assignmentAt(other), host_.row(one)->Text().toInt());
}

void StressWorker::sortRows() {
    if (host_.list().ListItems().Count() == 0) return; // the transaction would stay open
    world_.user.answers = {vbYes};
    host_.hub().articleOrder->kLV_SortInc();
    // Where the other program has emptied the category since.
    while (host_.workspace().transactionDepth() > 0)
        host_.workspace().Rollback();
}

// A position of the screen, whatever the category holds by now.
void StressWorker::answerPosition() {
    const Long position = 1 + pick(host_.list().ListItems().Count() + 1);
    world_.forms.answers = {[position](QDialog& form) {
        auto& asked = static_cast<frmArticleNewPos&>(form);
        asked.Opt(position == 1 ? 0 : 2).setValue(true);
        asked.UD.setMaximum(1'000'000);
        asked.UD.setValue(position);
        asked.chkCancel.setValue(0);
    }};
}

void StressWorker::addArticles() {
    QList<Long> mine;
    for (const Ref<ListItem>& item : host_.pool().ListItems())
        if (const Long article = item->Tag().toLong(); isMine(article)) mine.append(article);
    std::ranges::shuffle(mine, random_);
    mine.resize(1 + pick(3));
    host_.selectPool(mine);
    world_.user.answers = {vbOK};
    answerPosition();
    host_.hub().dropActions->addPoolSelection();
    for (const Long article : mine)
        pairs_.insert({article, category_});
}

void StressWorker::moveArticles() {
    QList<Long> places = ownRows();
    if (places.isEmpty()) return;
    std::ranges::shuffle(places, random_);
    places.resize(std::min<qsizetype>(places.size(), 1 + pick(2)));
    const Long target = someCategory();
    host_.selectRows(places);
    world_.user.answers = {vbOK};
    answerPosition();
    host_.hub().dropActions->DragDrop_AddArticles(target, u"Ziel"_s, acbPaneArticleList, category_, u"Quelle"_s, 0);
    for (const Long place : places) {
        const Long article = host_.row(place)->SubItems(1).toInt();
        if (pairs_.insert({article, target}).second) pairs_.erase({article, category_});
    }
}

void StressWorker::deleteRows() {
    QList<Long> places = ownRows();
    if (places.isEmpty()) return;
    std::ranges::shuffle(places, random_);
    places.resize(std::min<qsizetype>(places.size(), 1 + pick(2)));
    QList<Long> articles;
    for (const Long place : places)
        articles.append(host_.row(place)->SubItems(1).toInt());
    host_.selectRows(places);
    world_.user.answers = {vbYes};
    host_.hub().articleAssignment->kLV_DeletePosition();
    for (const Long article : articles)
        pairs_.erase({article, category_});
}

StressWorker::Pairs StressWorker::storedPairs() const {
    Pairs pairs;
    const auto rows = host_.database().OpenRecordset(u"SELECT [Artikel-Schlüssel], [Kategorie-Schlüssel] FROM ARTKAT"_s,
                                                     dao::dbOpenForwardOnly);
    for (; !rows->Eof(); rows->MoveNext())
        if (isMine(rows->value(0).toLong())) pairs.insert({rows->value(0).toLong(), rows->value(1).toLong()});
    return pairs;
}

QString StressWorker::complaint() const {
    if (role_.articles == StressRole::Articles::All) return {}; // others changed them too
    return pairs_ == storedPairs() ? QString() : u"articles of program %1 are not where it put them"_s.arg(role_.who);
}

} // namespace mkl
