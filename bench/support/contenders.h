// Contenders that many operations share.
#pragma once

#include <cstring>
#include <string>

#include "rastel/surface/kernels.h"
#include "support/suite.h"

namespace rastel::bench {

inline void CopyRows(Area to, Area from, int rowBytes, int height) {
    for (int y = 0; y < height; ++y, to.at += to.pitch, from.at += from.pitch) {
        std::memcpy(to.at, from.at, static_cast<std::size_t>(rowBytes));
    }
}

// The yardsticks: the same rectangle of pixels, or of plane bytes, copied by the C library.
inline void AddMemcpy(Suite& suite, const std::string& operation) {
    suite.Add(operation, "memcpy", [](const Round& r) { CopyRows(r.to, r.fromSprite, r.width * 4, r.height); });
}

inline void AddPlaneMemcpy(Suite& suite, const std::string& operation) {
    suite.Add(operation, "memcpy", [](const Round& r) { CopyRows(r.toPlane, r.fromPlane, r.width, r.height); });
}

// `call(table, round)` for each table of kernels that runs here, under its name.
template <class Call>
void AddTables(Suite& suite, const std::string& operation, Call call) {
    for (const kernels::RowTable* table : kernels::AllTables()) {
        if (table->runsHere()) {
            suite.Add(operation, std::string("Rastel ") + table->name,
                      [table, call](const Round& r) { call(*table, r); });
        }
    }
}

}   // namespace rastel::bench
