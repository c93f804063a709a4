// The kind of an object by its row.
#include "exchange/kinds.h"

#include <algorithm>

namespace fenmark::exchange {

Kind kindOf(const drawing::EntityView& entity) {
    if (entity.row) {
        for (const KindEntry& entry : kKindTable) {
            if (!entry.type.empty() && entry.type == entity.row->type) {
                return entry.kind;
            }
        }
    }
    return Kind::Others;
}

std::optional<Kind> kindNamed(std::string_view option) {
    const auto found = std::find_if(kKindTable.begin(), kKindTable.end(),
                                    [option](const KindEntry& entry) { return entry.option == option; });
    return found == kKindTable.end() ? std::nullopt : std::optional(found->kind);
}

} // namespace fenmark::exchange
