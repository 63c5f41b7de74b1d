#pragma once
// One line of the table: our figure beside the baselines of the same run.
#include "bench/RawClient.h"

#include <QString>
#include <functional>
#include <vector>

namespace bench {

struct Baseline {
    QString name;
    double figure;
};

struct Result {
    QString work;
    QString unit;
    double ours = 0;
    std::vector<Baseline> baselines; ///< their sum is what ours is divided by; empty: the goal bounds ours itself
    double goal = 0;                 ///< the ratio, or ours, may not exceed it
    QString skipped;                 ///< why there is no figure; empty if there is one
};

struct Row {
    QString name;
    std::function<Result()> measure;
};

/// The middle one; of an even number the greater of both.
double median(std::vector<double> times);
/// The middle one of the times in seconds that the call takes.
double medianSeconds(int runs, const std::function<void()>& call);

Result treeRow();
Result memoryRow();
Result importRow();
Result poolRow();
Result poolMemoryRow();
Result literalsRow();
Result findRow();
Result findScanRow();
Result likeRow();
Result orderRow();
Result parseRow();
Result fillRow();
Result fillWidgetRow();
Result fillMemoryRow();
Result clickRow();
Result scrollRow();
Result dragRow();
Result renumberRow(Engine engine);
Result moveRow(Engine engine);
Result addRow(Engine engine);
Result dropRow(Engine engine);
Result deleteTreeRow(Engine engine);
Result sortLevelRow(Engine engine);
Result copyRow(Engine engine);
Result searchRow();
Result searchPatternRow();
Result serverPoolRow();
Result serverTreeRow();

} // namespace bench
