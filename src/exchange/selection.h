// What of a drawing goes into an exported file: by kind, layer and rectangle.
#pragma once

#include "exchange/kinds.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fenmark::exchange {

// All that it takes must hold; an empty selection takes everything.
struct Selection {
    std::array<bool, kKinds> left{};          // kinds that are left out
    std::vector<std::string> layers;          // these alone, if there are any
    std::optional<drawing::Extent> rectangle; // objects whose box meets it, its edges included

    bool takesAll() const;
    bool takes(const drawing::EntityView& entity) const;
    bool takes(const drawing::Alignment& alignment) const;

  private:
    bool takesLayer(std::string_view layer) const;
};

// Whether the drawing has an object that the selection takes.
bool takesAny(const drawing::Drawing& drawing, const Selection& selection);

// The selected part as a drawing of its own, for writers that take whole drawings. Identifiers are new.
std::unique_ptr<drawing::Drawing> selectedPart(const drawing::Drawing& drawing, const Selection& selection);

} // namespace fenmark::exchange
