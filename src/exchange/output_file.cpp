// A file written beside its target and renamed over it.
#include "exchange/output_file.h"

#include "platform/files.h"

namespace fenmark::exchange {

std::string writeFile(const std::string& path, const std::function<void(std::ostream&)>& write) {
    const platform::PathState state = platform::lookUp(path);
    if (state.kind == platform::PathKind::Folder) {
        return path + ": is a folder";
    }
    if (state.kind == platform::PathKind::DanglingLink) {
        return path + ": is a link to '" + state.leadsTo + "', which does not exist";
    }
    const std::error_code error = platform::writeWhole(path, write);
    return error ? path + ": cannot be written: " + platform::reasonOf(error) : std::string();
}

} // namespace fenmark::exchange
