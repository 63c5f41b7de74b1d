#pragma once
// The plain way: a QTreeWidget filled from Qt's own SQL module.
#include <QIcon>
#include <QString>
#include <QTreeWidget>

namespace bench {

class WidgetOnPool {
public:
    /// Whether the module's driver is there.
    static bool isPossible();

    explicit WidgetOnPool(const QString& file);
    ~WidgetOnPool();
    Q_DISABLE_COPY_MOVE(WidgetOnPool)

    /// Number, name and icon of every article, sorted by number, until it is painted.
    void read();
    int count() const { return tree_.topLevelItemCount(); }

private:
    QTreeWidget tree_;
    QIcon on_, off_;
};

} // namespace bench
