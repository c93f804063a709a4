// The texts of object-data rows: the label of a route type, and the file's name without its directory.
#include "host/boundary/object_data_writer.h"

#include "platform/paths.h"

#include <array>

namespace fenmark::host {

std::string_view routeTypeLabel(std::int32_t routeType) {
    // Types 2, 3 and 7 become alignments and reach no row; their labels stand here all the same.
    static constexpr std::array<std::string_view, 7> labels = {"IP線",     "Type 2", "Type 3", "幅杭線左",
                                                               "幅杭線右", "連続線", "Type 7"};
    if (routeType < 1 || routeType > static_cast<std::int32_t>(labels.size())) {
        return {};
    }
    return labels[static_cast<std::size_t>(routeType - 1)];
}

std::string_view fileNameOfPath(std::string_view path) {
    const std::size_t separator = path.find_last_of(platform::kPathSeparators);
    return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

} // namespace fenmark::host
