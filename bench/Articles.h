#pragma once
#include "bench/RawDatabase.h"

#include <vector>

namespace bench {

/// What a program keeps of an article.
struct Article {
    int key;
    QString name;
    bool active;
};

/// The pool in its order by the plain C interface: the baseline of what reads it.
std::vector<Article> readArticles(const RawDatabase& raw);

/// Bytes of the heap that are in use.
double heapBytes();

} // namespace bench
