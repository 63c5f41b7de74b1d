// Prints the rows of the table, all or the named ones; with --list only their names.
#include "bench/Row.h"

#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace bench {

double medianSeconds(int runs, const std::function<void()>& call) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        call();
        times.push_back(double(timer.nsecsElapsed()) / 1e9);
    }
    std::ranges::sort(times);
    return times.at(times.size() / 2);
}

namespace {

const std::vector<Row>& rows() {
    static const std::vector<Row> all{{u"tree"_s, treeRow}, {u"memory"_s, memoryRow}, {u"import"_s, importRow}};
    return all;
}

QString figureText(double figure, const QString& unit) {
    return QString::number(figure, 'f', unit == u"s"_s ? 3 : 0) + u' ' + unit;
}

/// False if the goal is missed.
bool print(const QString& name, const Result& result) {
    if (!result.skipped.isEmpty()) {
        std::printf("%-8s %s\n         skipped: %s\n", qPrintable(name), qPrintable(result.work),
                    qPrintable(result.skipped));
        return true;
    }
    double sum = 0;
    QStringList parts;
    for (const Baseline& baseline : result.baselines) {
        sum += baseline.figure;
        parts += baseline.name + u' ' + figureText(baseline.figure, result.unit);
    }
    const bool hasRatio = !result.baselines.empty();
    const double judged = hasRatio ? result.ours / sum : result.ours;
    const QString ratio = hasRatio ? QString::number(judged, 'f', 2) : u"-"_s;
    const bool isMet = judged <= result.goal;
    std::printf("%-8s %s\n         ours %s | %s | ratio %s | goal %s: %s\n", qPrintable(name), qPrintable(result.work),
                qPrintable(figureText(result.ours, result.unit)),
                qPrintable(hasRatio ? parts.join(u" + "_s) : u"no baseline"_s), qPrintable(ratio),
                qPrintable(QString::number(result.goal)), isMet ? "met" : "MISSED");
    return isMet;
}

} // namespace

} // namespace bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QStringList wanted = QApplication::arguments().mid(1);
    bool allMet = true;
    for (const bench::Row& row : bench::rows()) {
        if (wanted.contains(u"--list"_s)) {
            std::puts(qPrintable(row.name));
        } else if (wanted.isEmpty() || wanted.contains(row.name)) {
            allMet &= bench::print(row.name, row.measure());
        }
    }
    return allMet ? 0 : 1;
}
