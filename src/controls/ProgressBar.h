#pragma once
#include "base/types.h"

#include <QProgressBar>

namespace mkl {

/// How far a long read has come. No value is an error: the bar shows the nearest one of its range.
class ProgressBar : public QProgressBar {
    Q_OBJECT

public:
    explicit ProgressBar(QWidget* parent = nullptr);

    Long Min() const { return min_; }
    void setMin(Long min);
    Long Max() const { return max_; }
    void setMax(Long max);
    Long Value() const { return value_; }
    void setValue(Long value); ///< clamped to Min and Max

private:
    bool isWorthShowing() const;
    void refresh();

    Long min_ = 0;
    Long max_ = 100;
    Long value_ = 0;
};

} // namespace mkl
