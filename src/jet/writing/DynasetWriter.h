#pragma once
#include "jet/writing/SelectWriter.h"

namespace jet {

/// Writes a bound SELECT as the two statements of a dynaset.
class DynasetWriter {
public:
    DynasetWriter(const Target& target, const BoundSelect& select)
        : target_(target)
        , select_(select) {}

    DynasetPlan write();

private:
    bool isOfRows() const;
    void chooseSources();
    int deleteSource() const;
    void addSource(int source, bool optional);
    NativeStatement keys();
    NativeStatement row();
    QByteArray rowTables(int firstKeyParameter) const;

    const Target& target_;
    const BoundSelect& select_;
    QList<int> sources_; ///< those whose keys a row has
    DynasetPlan plan_;
    QByteArrayList keyColumns_; ///< native
};

} // namespace jet
