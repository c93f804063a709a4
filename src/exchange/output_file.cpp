// A file written beside its target and renamed over it.
#include "exchange/output_file.h"

#include "drawing/geopackage/package_file.h"
#include "platform/files.h"

namespace fenmark::exchange {

Outcome writeFile(const std::string& path, const std::function<void(std::ostream&)>& write) {
    const platform::PathState state = platform::lookUp(path);
    if (state.kind == platform::PathKind::Folder) {
        return failed({path + ": is a folder", path + ": フォルダです"});
    }
    if (state.kind == platform::PathKind::DanglingLink) {
        return failed({path + ": is a link to '" + state.leadsTo + "', which does not exist",
                       path + ": リンク先の「" + state.leadsTo + "」がありません"});
    }
    if (drawing::isPackageFile(path)) {
        return failed({path + ": is a drawing, which no other file may replace",
                       path + ": 図面です。ほかのファイルで置き換えることはできません"});
    }
    const std::error_code error = platform::writeWhole(path, write);
    if (!error) {
        return {};
    }
    const Worded reason = platform::wordedReason(error);
    return failed({path + ": cannot be written: " + reason.english, path + ": 書き込めません: " + reason.japanese});
}

} // namespace fenmark::exchange
