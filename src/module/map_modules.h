// Makes sure that the host's map modules, on which the object-data tables depend, are loaded.
#pragma once

namespace fenmark::module {

// "mdmap.mdm" first, always; what is loaded already is left alone. A failed load is not looked at.
void loadMapModules();

} // namespace fenmark::module
