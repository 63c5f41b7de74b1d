#include "support/LeftOutTests.h"

#include "support/PostgresServer.h"

#include <cstdio>

namespace mkl {

QByteArray& leftOutTests() {
    static QByteArray patterns;
    return patterns;
}

bool leaveToFiles(std::span<const LeftOut> tests) {
    if (!testsOnServer()) return false;
    for (const auto& [pattern, reason] : tests) {
        leftOutTests() += QByteArray(pattern) + ':';
        std::printf("left out: %s (%s)\n", pattern, reason);
    }
    return true;
}

bool leaveToServers(std::span<const LeftOut> tests) {
    if (testsOnServer()) return false;
    for (const auto& [pattern, reason] : tests)
        leftOutTests() += QByteArray(pattern) + ':';
    return true;
}

} // namespace mkl
