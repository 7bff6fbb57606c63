#include "rastel/surface/kernels.h"

#include <atomic>
#include <cstring>

#include "rastel/surface/kernel_tables.h"

namespace rastel::kernels {

namespace {

const RowTable* const tables[] = {
#ifdef RASTEL_X86
    &avx2Table, &sse2Table,
#endif
    &plainTable};

const RowTable* BestTable() {
    for (const RowTable* const table : tables) {
        if (table->runsHere()) {
            return table;
        }
    }
    return &plainTable;
}

std::atomic<const RowTable*>& Chosen() {
    static std::atomic<const RowTable*> chosen = BestTable();
    return chosen;
}

}   // namespace

std::span<const RowTable* const> AllTables() {
    return tables;
}

const RowTable& Rows() {
    return *Chosen().load(std::memory_order_relaxed);
}

const RowTable& PlainRows() {
    return plainTable;
}

bool ForceTable(const char* name) {
    if (!name) {
        Chosen() = BestTable();
        return true;
    }
    for (const RowTable* const table : tables) {
        if (std::strcmp(table->name, name) == 0 && table->runsHere()) {
            Chosen() = table;
            return true;
        }
    }
    return false;
}

}   // namespace rastel::kernels
