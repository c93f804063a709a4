// Paths as texts.
#include "sima/text/path.h"

#include "sima/text/cp932.h"
#include "sima/text/utf8.h"

#include <algorithm>

namespace fenmark::sima {

std::string textOfPath(std::string_view path) {
    std::string text;
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find('/', at), path.size() - 1) + 1;
        const std::string_view part = path.substr(at, end - at);
        if (isValidUtf8(part)) {
            text += part;
        } else {
            decodeCp932(text, part);
        }
        at = end;
    }
    return text;
}

} // namespace fenmark::sima
