// Makes sure that the host's map modules, on which the object-data tables depend, are loaded.
#include "module/map_modules.h"

#include "host/surface/module.h"
#include "values/ascii_case.h"

#include <string>

namespace fenmark::module {

void loadMapModules() {
    bool map = false;
    bool mapData = false;
    for (const mirdane::ResultEntry& entry : mirdane::mdedMdmLoaded()) {
        if (entry.kind != mirdane::kStringEntry) {
            continue;
        }
        const std::string name = asciiLower(entry.text);
        map = map || name == "mdmap.mdm";
        mapData = mapData || name == "mdmapade.mdm";
    }
    if (!map) {
        mirdane::mdedMdmLoad("mdmap.mdm");
    }
    if (!mapData) {
        mirdane::mdedMdmLoad("MdMapAde.mdm");
    }
}

} // namespace fenmark::module
