// The embedded host at work on one drawing.
#include "desk/session/desk_session.h"

#include "desk/session/source_record.h"
#include "drawing/file_digest.h"
#include "drawing/imported_file.h"
#include "platform/files.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <sstream>
#include <system_error>
#include <utility>

namespace fenmark::desk {

using drawing::Drawing;
using host::embedded::Document;

namespace {

constexpr const char* kModuleName = "Fenmark.mdm";

// The import of a file beside such a drawing would write its log over it.
Outcome refusedAsLog(const std::string& path) {
    return isNamedAsLog(platform::behindLinks(path))
               ? failed({path + ": a drawing must not bear the name of an import's log; rename it",
                         path + ": 図面の名前が読み込みログの名前と同じです。名前を変えてください"})
               : Outcome();
}

// Sets a flag for a while, whatever ends it.
class While {
  public:
    explicit While(bool& flag) : flag_(flag) { flag_ = true; }
    ~While() { flag_ = false; }
    While(const While&) = delete;
    While& operator=(const While&) = delete;

  private:
    bool& flag_;
};

} // namespace

DeskSession::DeskSession() {
    modules_.onSystemText([this](std::string_view name, const std::string& text) {
        if (name == mirdane::kRouteVariable) {
            noteRoute(text);
        } else if (name == mirdane::kPreviewedFileVariable && previewHandler_) {
            previewHandler_(text);
        }
    });
}

// So that an alignment that lies off its route is reported.
void DeskSession::noteRoute(const std::string& text) {
    std::istringstream numbers(text);
    numbers.imbue(std::locale::classic());
    std::uint64_t id = 0;
    numbers >> id;
    std::vector<host::MdGePoint3d> points;
    for (host::MdGePoint3d point; numbers >> point.x >> point.y >> point.z;) {
        points.push_back(point);
    }
    host_.noteRoute(host::MdDbObjectId(id), points);
}

Outcome DeskSession::loadModule(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        std::error_code error;
        if (std::filesystem::is_regular_file(path, error)) {
            return modules_.load(path);
        }
    }
    return failed(std::string(kModuleName) + ": there is no such file beside the program or in its installation");
}

void DeskSession::replaceDocument(Document& old) {
    host_.closeDocument(old);
    modules_.send(mirdane::kLoadDrawingMessage);
    steps_.clear();
    undone_.clear();
    bottomSerial_ = ++lastSerial_;
    // What another program changed in the file may be waiting to be written.
    const bool asInFile = !path().empty() && !host_.currentDocument()->store().hasChanges(drawing());
    savedSerial_ = asInFile ? bottomSerial_ : kNeverSaved;
}

void DeskSession::newDrawing() {
    Document& old = *host_.currentDocument();
    modules_.send(mirdane::kUnloadDrawingMessage);
    host_.newDocument();
    replaceDocument(old);
}

Outcome DeskSession::openBy(const std::function<Outcome(Document&)>& read) {
    Document& old = *host_.currentDocument();
    Document& opened = host_.newDocument();
    Outcome result = read(opened);
    if (!result) {
        host_.closeDocument(opened);
        host_.makeCurrent(old);
        return result;
    }
    host_.makeCurrent(old);
    modules_.send(mirdane::kUnloadDrawingMessage);
    host_.makeCurrent(opened);
    replaceDocument(old);
    return result;
}

Outcome DeskSession::open(const std::string& path) {
    if (Outcome refused = refusedAsLog(path); !refused) {
        return refused;
    }
    return openBy([&](Document& opened) { return opened.store().open(path, opened.drawing()); });
}

Outcome DeskSession::openCopy(const std::string& path) {
    return openBy([&](Document& opened) { return drawing::DrawingStore().open(path, opened.drawing()); });
}

Outcome DeskSession::writeCopy(const std::string& path, const drawing::DrawingTexts& texts) const {
    return drawing::DrawingStore::writeCopy(path, drawing(), texts);
}

Outcome DeskSession::save(const std::string& path, const drawing::TextChanges& texts) {
    if (Outcome refused = refusedAsLog(path); !refused) {
        return refused;
    }
    Outcome result = host_.currentDocument()->store().save(path, drawing(), {}, texts);
    if (result) {
        savedSerial_ = serialNow();
    } else if (path == this->path()) {
        savedSerial_ = kNeverSaved; // whatever the file holds, it may be something else
    }
    return result;
}

bool DeskSession::hasChanges() const {
    if (!path().empty()) {
        return serialNow() != savedSerial_;
    }
    const Drawing& drawing = host_.currentDocument()->drawing();
    return drawing.entityCount() > 0 || drawing.alignmentCount() > 0 || !drawing.sites().empty() ||
           drawing.layers().size() > 1 || drawing.layers().front().colour || drawing.zone() != 0;
}

bool DeskSession::keepStep(StepKind kind, const Drawing::Mark& before) {
    const Drawing& now = drawing();
    if (now.mark() != before) {
        undone_.clear(); // it belongs to a state that is no more
    }
    const bool changed = now.layers().size() != before.layers || now.sites().size() != before.sites ||
                         now.tables().size() != before.tables || now.alignmentCount() != before.alignments ||
                         now.entityCount() != before.entities || now.zone() != before.zone ||
                         now.imports().size() != before.imports;
    if (changed) {
        steps_.push_back({kind, before, ++lastSerial_, {}});
    }
    return changed;
}

// Notes the import in the drawing, as the command line does. A file that made nothing and met no error left no trace.
void DeskSession::noteImport(CommandRun& run, std::uint64_t firstId) {
    run.file = modules_.systemText(mirdane::kImportedFileVariable);
    run.passedOver = modules_.systemText(mirdane::kPassedOverVariable);
    run.doubts = modules_.systemText(mirdane::kDoubtsVariable);
    if (run.file.empty()) {
        return;
    }
    drawing::Import import = drawing::importOf(run.file, drawing::digestFile(run.file));
    for (const std::size_t place : drawing().importsOf(import.fileName)) {
        run.earlier.push_back(drawing().imports()[place].id);
    }
    std::istringstream numbers(modules_.systemText(mirdane::kCountsVariable));
    drawing::ImportCounts& counts = import.counts;
    numbers >> counts.points >> counts.lots >> counts.routes >> counts.alignments >> counts.longitudinal >>
        counts.crossSections >> counts.errors;
    import.firstId = firstId;
    import.lastId = drawing().lastId();
    drawing().addImport(std::move(import));
}

CommandRun DeskSession::run(std::string_view command, const std::string& pendingFile) {
    if (running_) {
        CommandRun refused;
        refused.outcome = failed({"a command is running", "コマンドの実行中です"});
        return refused;
    }
    const While running(running_);
    const Drawing::Mark before = drawing().mark();
    host_.clearNotes();
    modules_.setSystemText(mirdane::kPendingFileVariable, pendingFile);
    modules_.setSystemText(mirdane::kLogFileVariable, {});
    modules_.setSystemText(mirdane::kImportedFileVariable, {});
    modules_.setSystemText(mirdane::kPlanTangentsVariable, host_.planTangents() ? "1" : "");
    modules_.setSystemText(mirdane::kEncodingVariable, encoding_);
    modules_.setSystemText(mirdane::kReadInVariable, {});
    CommandRun run;
    run.outcome = modules_.run(command);
    modules_.setSystemText(mirdane::kPendingFileVariable, {});
    run.logPath = modules_.systemText(mirdane::kLogFileVariable);
    run.readIn = modules_.systemText(mirdane::kReadInVariable);
    noteImport(run, before.lastId + 1);
    run.changed = keepStep(StepKind::Import, before);
    run.notes = host_.layoutNotes();
    return run;
}

bool DeskSession::addLayer(const std::string& name) {
    if (drawing().findLayer(name)) {
        return false;
    }
    const Drawing::Mark before = drawing().mark();
    drawing().addLayer(name);
    keepStep(StepKind::Layer, before);
    return true;
}

bool DeskSession::mayRename(std::size_t layer) const {
    const std::vector<drawing::Layer>& layers = drawing().layers();
    return layer < layers.size() && layers[layer].name != drawing::kFirstLayer;
}

bool DeskSession::mayRemove(std::size_t layer) const {
    return mayRename(layer) && layer != drawing().currentLayer() && drawing().layerCounts()[layer] == 0;
}

bool DeskSession::changeLayers(StepKind kind, std::vector<drawing::Layer> layers) {
    const Drawing::Mark before = drawing().mark();
    std::vector<drawing::Layer> now = drawing().layers();
    if (running_ || layers == now || !drawing().setLayers(std::move(layers))) {
        return false;
    }
    undone_.clear(); // it belongs to a state that is no more
    steps_.push_back({kind, before, ++lastSerial_, std::move(now)});
    return true;
}

bool DeskSession::changeLayersBack(Step& step) {
    std::vector<drawing::Layer> now = drawing().layers();
    if (!drawing().setLayers(std::move(step.layers))) {
        return false;
    }
    step.layers = std::move(now);
    return true;
}

bool DeskSession::renameLayer(std::size_t layer, const std::string& name) {
    if (!mayRename(layer)) {
        return false;
    }
    std::vector<drawing::Layer> layers = drawing().layers();
    layers[layer].name = name;
    return changeLayers(StepKind::LayerName, std::move(layers));
}

bool DeskSession::setLayerColour(std::size_t layer, const std::optional<drawing::Colour>& colour) {
    std::vector<drawing::Layer> layers = drawing().layers();
    if (layer >= layers.size()) {
        return false;
    }
    layers[layer].colour = colour;
    return changeLayers(StepKind::LayerColour, std::move(layers));
}

bool DeskSession::removeLayer(std::size_t layer) {
    if (!mayRemove(layer)) {
        return false;
    }
    std::vector<drawing::Layer> layers = drawing().layers();
    layers.erase(layers.begin() + static_cast<std::ptrdiff_t>(layer));
    return changeLayers(StepKind::LayerGone, std::move(layers));
}

void DeskSession::setZone(int zone) {
    if (drawing().zone() == zone) {
        return;
    }
    const Drawing::Mark before = drawing().mark();
    drawing().setZone(zone);
    keepStep(StepKind::Zone, before);
}

bool DeskSession::undo() {
    if (steps_.empty() || running_) {
        return false;
    }
    if (!steps_.back().layers.empty()) {
        if (!changeLayersBack(steps_.back())) {
            return false;
        }
        undone_.push_back({std::move(steps_.back()), {}});
    } else {
        Drawing::Removed removed = drawing().takeBack(steps_.back().before);
        undone_.push_back({std::move(steps_.back()), std::move(removed)});
    }
    steps_.pop_back();
    host_.clearNotes();
    return true;
}

bool DeskSession::redo() {
    if (undone_.empty() || running_) {
        return false;
    }
    UndoneStep undone = std::move(undone_.back());
    undone_.pop_back();
    const bool done =
        undone.step.layers.empty() ? drawing().putBack(std::move(undone.removed)) : changeLayersBack(undone.step);
    if (!done) {
        undone_.clear();
        return false;
    }
    host_.clearNotes();
    steps_.push_back(std::move(undone.step));
    return true;
}

void DeskSession::removeImports(const std::vector<drawing::MdDbObjectId>& imports) {
    for (const drawing::MdDbObjectId id : imports) {
        drawing().removeImport(id);
    }
    steps_.clear();
    undone_.clear();
    bottomSerial_ = ++lastSerial_;
}

std::vector<std::string> modulePaths(const std::string& programFolder) {
    std::vector<std::string> paths;
    if (const char* named = std::getenv("FENMARK_MODULE_PATH"); named != nullptr && *named != '\0') {
        std::error_code error;
        if (std::filesystem::is_directory(named, error)) {
            paths.push_back((std::filesystem::path(named) / kModuleName).string());
        } else {
            paths.emplace_back(named);
        }
    }
    const std::filesystem::path folder(programFolder);
    paths.push_back((folder / kModuleName).string());
    paths.push_back((folder / ".." / FENMARK_MODULE_FOLDER / kModuleName).lexically_normal().string());
    return paths;
}

} // namespace fenmark::desk
