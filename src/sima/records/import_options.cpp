// What the user chose to import.
#include "sima/records/import_options.h"

#include "sima/text/string_table.h"

#include <algorithm>

namespace fenmark::sima {

SimaImportOptions::SimaImportOptions() {
    labels[0] = resourceText(kLabelCoordinates);
    for (std::size_t kind = 1; kind < kImportKinds; ++kind) {
        labels[kind] = resourceText(kLabelLots + static_cast<int>(kind) - 1);
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
