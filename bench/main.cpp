// Prints the rows of the table, all or the named ones; --list only their names, --head only the table's head.
#include "bench/OpenCatalogue.h"
#include "bench/Row.h"

#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <iterator>

using namespace Qt::StringLiterals;

namespace bench {

double median(std::vector<double> times) {
    std::ranges::sort(times);
    return times.at(times.size() / 2);
}

double medianSeconds(int runs, const std::function<void()>& call) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        call();
        times.push_back(double(timer.nsecsElapsed()) / 1e9);
    }
    return median(std::move(times));
}

namespace {

/// A row of that engine; skipped where the engine is missing.
Row rowOn(Engine engine, const QString& name, const std::function<Result()>& measure) {
    return {name, [engine, measure] {
                Result missing;
                missing.skipped = OpenCatalogue::missing(engine);
                return missing.skipped.isEmpty() ? measure() : missing;
            }};
}

/// The commands of the browser.
std::vector<Row> commandRows(Engine engine) {
    using Measure = Result (*)(Engine);
    const std::vector<std::pair<QString, Measure>> commands{
        {u"renumber"_s, renumberRow},  {u"move"_s, moveRow},       {u"add"_s, addRow},  {u"drop"_s, dropRow},
        {u"deltree"_s, deleteTreeRow}, {u"level"_s, sortLevelRow}, {u"copy"_s, copyRow}};
    std::vector<Row> rows;
    for (const auto& [name, measure] : commands)
        rows.push_back(rowOn(engine, engine == Engine::Server ? u"srv"_s + name : name,
                             [engine, measure = measure] { return measure(engine); }));
    return rows;
}

std::vector<Row> allRows() {
    std::vector<Row> all{{u"tree"_s, treeRow},
                         {u"memory"_s, memoryRow},
                         {u"import"_s, importRow},
                         {u"pool"_s, poolRow},
                         {u"poolmem"_s, poolMemoryRow},
                         {u"literals"_s, literalsRow},
                         {u"find"_s, findRow},
                         {u"findscan"_s, findScanRow},
                         {u"like"_s, likeRow},
                         {u"order"_s, orderRow},
                         {u"parse"_s, parseRow},
                         {u"fill"_s, fillRow},
                         {u"fillqt"_s, fillWidgetRow},
                         {u"fillmem"_s, fillMemoryRow},
                         {u"click"_s, clickRow},
                         {u"scroll"_s, scrollRow},
                         {u"drag"_s, dragRow},
                         {u"search"_s, searchRow},
                         {u"searchlike"_s, searchPatternRow}};
    std::ranges::copy(commandRows(Engine::File), std::back_inserter(all));
    all.push_back(rowOn(Engine::Server, u"srvpool"_s, serverPoolRow));
    all.push_back(rowOn(Engine::Server, u"srvtree"_s, serverTreeRow));
    std::ranges::copy(commandRows(Engine::Server), std::back_inserter(all));
    return all;
}

QString figureText(double figure, const QString& unit) {
    return QString::number(figure, 'f', unit == u"s"_s ? 3 : unit == u"ms"_s ? 1 : 0) + u' ' + unit;
}

void printLine(const QStringList& cells) {
    static constexpr int widths[] = {10, 78, 14, 62, 5, 11};
    QString line;
    for (int column = 0; column < cells.size(); ++column)
        line += u"| "_s + cells[column].leftJustified(widths[column]) + u' ';
    std::puts(qPrintable(line + u'|'));
}

void printHead() {
    printLine({u"row"_s, u"work"_s, u"ours"_s, u"baselines"_s, u"ratio"_s, u"goal"_s});
}

QString baselinesText(const Result& result) {
    QStringList parts;
    for (const Baseline& baseline : result.baselines)
        parts += baseline.name + u' ' + figureText(baseline.figure, result.unit);
    return parts.isEmpty() ? u"-"_s : parts.join(u" + "_s);
}

/// False if the goal is missed.
bool print(const QString& name, const Result& result) {
    if (!result.skipped.isEmpty()) {
        printLine({name, result.work, u"skipped"_s, result.skipped, {}, {}});
        return true;
    }
    double sum = 0;
    for (const Baseline& baseline : result.baselines)
        sum += baseline.figure;
    const bool hasRatio = !result.baselines.empty();
    const double judged = hasRatio ? result.ours / sum : result.ours;
    const bool isMet = judged <= result.goal;
    printLine({name, result.work, figureText(result.ours, result.unit), baselinesText(result),
               hasRatio ? QString::number(judged, 'f', 2) : u"-"_s,
               QString::number(result.goal, 'g', 4) + (isMet ? u" met"_s : u" MISSED"_s)});
    return isMet;
}

} // namespace

} // namespace bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QStringList wanted = QApplication::arguments().mid(1);
    if (wanted.contains(u"--head"_s)) bench::printHead();
    bool allMet = true;
    for (const bench::Row& row : bench::allRows()) {
        if (wanted.contains(u"--list"_s)) {
            std::puts(qPrintable(row.name));
        } else if (wanted.isEmpty() || wanted.contains(row.name)) {
            allMet &= bench::print(row.name, row.measure());
        }
    }
    return allMet ? 0 : 1;
}
