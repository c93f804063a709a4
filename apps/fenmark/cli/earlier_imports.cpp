// The imports of a file of the same name that a drawing has already.
#include "cli/earlier_imports.h"

#include "cli/messages.h"
#include "platform/files.h"

#include <algorithm>

namespace fenmark::cli {

using drawing::Drawing;

namespace {

// Those among the imports that a new one of the file replaces: not what this call has just made of another file of the
// same name.
std::vector<std::size_t> replacedAmong(const std::vector<std::size_t>& earlier, const Drawing& drawing,
                                       const std::string& file, const std::vector<host::MdDbObjectId>& madeNow) {
    std::vector<std::size_t> replaced;
    for (const std::size_t place : earlier) {
        const drawing::Import& import = drawing.imports()[place];
        const bool isNew = std::find(madeNow.begin(), madeNow.end(), import.id) != madeNow.end();
        if (!isNew || platform::leadToOneFile(import.path, file)) {
            replaced.push_back(place);
        }
    }
    return replaced;
}

// When these were imported, in words; empty if there are none.
std::string timesOf(const Drawing& drawing, const std::vector<std::size_t>& earlier, const Streams& streams) {
    if (earlier.empty()) {
        return {};
    }
    const std::string& time = drawing.imports()[earlier.back()].time;
    const std::string times = std::to_string(earlier.size());
    return inLanguage(streams, times + "回、最後は " + time,
                      (earlier.size() == 1 ? "once" : times + " times") + ", last at " + time);
}

} // namespace

EarlierImports::EarlierImports(const Drawing& drawing, const std::string& file, const std::string& name, bool replace,
                               const std::vector<host::MdDbObjectId>& madeNow, const Streams& streams)
    : replace_(replace) {
    const std::vector<std::size_t> ofName = drawing.importsOf(name);
    if (replace) {
        replaced_ = replacedAmong(ofName, drawing, file, madeNow);
    }
    keepsNamesake_ = replace && replaced_.size() < ofName.size();
    times_ = timesOf(drawing, replace ? replaced_ : ofName, streams);
}

void EarlierImports::removeReplaced(Drawing& drawing) const {
    std::vector<host::MdDbObjectId> ids;
    for (const std::size_t place : replaced_) {
        ids.push_back(drawing.imports()[place].id);
    }
    for (const host::MdDbObjectId id : ids) {
        drawing.removeImport(id);
    }
}

void EarlierImports::tell(const Streams& streams, bool quiet, const std::string& file) const {
    if (!times_.empty()) {
        if (replace_) {
            tellFileNote(streams, quiet, file, "replaced",
                         inLanguage(streams,
                                    "図面にあった同じ名前のファイルの図形を置き換えます(読み込み " + times_ + ")",
                                    "replaces what the drawing had of a file of this name, imported " + times_));
        } else {
            tellFileNote(streams, quiet, file, "imported-before",
                         inLanguage(streams,
                                    "図面には同じ名前のファイルの図形が既にあります(読み込み " + times_ +
                                        ")。--replace を付けると新しい図形に置き換わります",
                                    "the drawing has objects of a file of this name already, imported " + times_ +
                                        "; --replace puts the new ones in their place"));
        }
    } else if (replace_ && !keepsNamesake_) {
        tellFileNote(streams, quiet, file, "nothing-replaced",
                     inLanguage(streams, "--replace: 図面には同じ名前のファイルの図形がありませんでした",
                                "--replace: the drawing had nothing of a file of this name"));
    }
    if (keepsNamesake_) {
        tellFileNote(streams, quiet, file, "namesake-kept",
                     inLanguage(streams,
                                "--replace: 同じ名前の別のファイルを今回読み込みました。その図形は置き換えません",
                                "--replace: another file of this name was imported just now; its objects are kept"));
    }
}

} // namespace fenmark::cli
