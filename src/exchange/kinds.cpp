// The kind of an object by its row.
#include "exchange/kinds.h"

#include <algorithm>

namespace fenmark::exchange {

Kind kindOf(const drawing::EntityView& entity) {
    return entity.row ? kindOfType(entity.row->type) : Kind::Others;
}

Kind drawnKindOf(const drawing::EntityView& entity) {
    return entity.row ? drawnKind(entity.row->type, entity.isPoint()) : Kind::Others;
}

std::optional<Kind> kindNamed(std::string_view option) {
    const auto found = std::find_if(kKindTable.begin(), kKindTable.end(),
                                    [option](const KindEntry& entry) { return entry.option == option; });
    return found == kKindTable.end() ? std::nullopt : std::optional(found->kind);
}

} // namespace fenmark::exchange
