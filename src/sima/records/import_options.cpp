// What the user chose to import.
#include "sima/records/import_options.h"

#include <algorithm>

namespace fenmark::sima {

SimaImportOptions::SimaImportOptions() {
    for (const ImportKindEntry& entry : kImportKindTable) {
        labels[static_cast<std::size_t>(entry.kind)] = resourceText(entry.label);
    }
    labels[kImportKinds] = resourceText(kLabelAll);
}

std::int32_t SimaImportOptions::totalCount() const {
    std::int32_t total = 0;
    for (std::size_t kind = 0; kind < kImportKinds; ++kind) {
        total += counts[kind];
    }
    return total;
}

bool SimaImportOptions::anySelected() const {
    return std::find(flags.begin(), flags.end(), true) != flags.end();
}

} // namespace fenmark::sima
