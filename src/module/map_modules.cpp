// Makes sure that the host's map modules, on which the object-data tables depend, are loaded.
#include "module/map_modules.h"

#include "host/surface/module.h"

#include <algorithm>
#include <string>

namespace fenmark::module {

namespace {

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

} // namespace

void loadMapModules() {
    bool map = false;
    bool mapData = false;
    for (const mirdane::ResultEntry& entry : mirdane::mdedMdmLoaded()) {
        if (entry.kind != mirdane::kStringEntry) {
            continue;
        }
        const std::string name = lowerCase(entry.text);
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
