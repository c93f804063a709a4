// The texts of object-data rows: the label of a route type, and the file's name without its directory.
#include "host/boundary/object_data_writer.h"

#include "platform/paths.h"

namespace fenmark::host {

std::string_view routeTypeLabel(std::int32_t routeType) {
    for (const KindEntry& entry : kKindTable) {
        if (entry.routeType == routeType && routeType != 0) {
            return entry.type;
        }
    }
    // These become alignments and reach no row; their labels stand here all the same.
    switch (routeType) {
    case 2:
        return "Type 2";
    case 3:
        return "Type 3";
    case 7:
        return "Type 7";
    default:
        return {};
    }
}

std::string_view fileNameOfPath(std::string_view path) {
    const std::size_t separator = path.find_last_of(platform::kPathSeparators);
    return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

} // namespace fenmark::host
