#pragma once
// Names of a hardware trade, and the chance that picks them.
#include <QString>
#include <random>

namespace mkl {

/// Numbers by chance, the same on every machine: the distributions of the standard library differ between libraries.
class DemoChance {
public:
    explicit DemoChance(quint32 seed)
        : engine_(seed) {}

    /// 0 to count - 1.
    int below(int count) {
        return static_cast<int>(static_cast<quint64>(engine_() & 0xFFFFFFFFU) * static_cast<quint64>(count) >> 32);
    }
    bool percent(int share) { return below(100) < share; }

private:
    std::mt19937 engine_;
};

/// Name of the n-th category, from 0; level from 1. No name comes twice.
QString demoCategoryName(int number, int level);

struct DemoArticle {
    QString name;
    QString ownNumber;
};

/// Name and number of the n-th article, from 0.
DemoArticle demoArticle(int number, DemoChance& chance);

} // namespace mkl
