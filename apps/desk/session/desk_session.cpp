// The embedded host at work on one drawing.
#include "desk/session/desk_session.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace fenmark::desk {

using drawing::Drawing;
using drawing::StoreResult;
using host::embedded::Document;
using host::embedded::ModuleResult;

namespace {

constexpr const char* kModuleName = "Fenmark.mdm";

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

ModuleResult DeskSession::loadModule(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        std::error_code error;
        if (std::filesystem::is_regular_file(path, error)) {
            return modules_.load(path);
        }
    }
    return {false, std::string(kModuleName) + ": there is no such file beside the program or in its installation"};
}

void DeskSession::replaceDocument(Document& old) {
    host_.closeDocument(old);
    modules_.send(mirdane::kLoadDrawingMessage);
    steps_.clear();
    undone_.clear();
}

void DeskSession::newDrawing() {
    Document& old = *host_.currentDocument();
    modules_.send(mirdane::kUnloadDrawingMessage);
    host_.newDocument();
    replaceDocument(old);
}

StoreResult DeskSession::open(const std::string& path) {
    Document& old = *host_.currentDocument();
    Document& opened = host_.newDocument();
    StoreResult result = opened.store().open(path, opened.drawing());
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

StoreResult DeskSession::save(const std::string& path) {
    return host_.currentDocument()->store().save(path, drawing());
}

bool DeskSession::hasChanges() const {
    const Document& document = *host_.currentDocument();
    const Drawing& drawing = document.drawing();
    if (!path().empty()) {
        return const_cast<Document&>(document).store().hasChanges(drawing);
    }
    return drawing.entityCount() > 0 || drawing.alignmentCount() > 0 || !drawing.sites().empty() ||
           drawing.layers().size() > 1 || drawing.zone() != 0;
}

bool DeskSession::keepStep(StepKind kind, const Drawing::Mark& before, const std::string& logPath) {
    const Drawing& now = drawing();
    if (now.mark() != before) {
        undone_.clear(); // it belongs to a state that is no more
    }
    const bool changed = now.layers().size() != before.layers || now.sites().size() != before.sites ||
                         now.tables().size() != before.tables || now.alignmentCount() != before.alignments ||
                         now.entityCount() != before.entities || now.zone() != before.zone;
    if (changed) {
        steps_.push_back({kind, before, logPath});
    }
    return changed;
}

CommandOutcome DeskSession::run(std::string_view command, const std::string& pendingFile) {
    if (running_) {
        return {
            .ok = false, .message = "a command is running", .changed = false, .logPath = {}, .readIn = {}, .notes = {}};
    }
    const While running(running_);
    const Drawing::Mark before = drawing().mark();
    host_.clearNotes();
    modules_.setSystemText(mirdane::kPendingFileVariable, pendingFile);
    modules_.setSystemText(mirdane::kLogFileVariable, {});
    modules_.setSystemText(mirdane::kPlanTangentsVariable, host_.planTangents() ? "1" : "");
    modules_.setSystemText(mirdane::kEncodingVariable, encoding_);
    modules_.setSystemText(mirdane::kReadInVariable, {});
    ModuleResult result = modules_.run(command);
    modules_.setSystemText(mirdane::kPendingFileVariable, {});
    CommandOutcome outcome;
    outcome.ok = result.ok;
    outcome.message = std::move(result.message);
    outcome.logPath = modules_.systemText(mirdane::kLogFileVariable);
    outcome.readIn = modules_.systemText(mirdane::kReadInVariable);
    outcome.changed = keepStep(StepKind::Import, before, outcome.logPath);
    outcome.notes = host_.layoutNotes();
    return outcome;
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
    Drawing::Removed removed = drawing().takeBack(steps_.back().before);
    undone_.push_back({std::move(steps_.back()), std::move(removed)});
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
    if (!drawing().putBack(std::move(undone.removed))) {
        undone_.clear();
        return false;
    }
    host_.clearNotes();
    steps_.push_back(std::move(undone.step));
    return true;
}

const Step* DeskSession::lastImport() const {
    const auto found =
        std::find_if(steps_.rbegin(), steps_.rend(), [](const Step& step) { return !step.logPath.empty(); });
    return found == steps_.rend() ? nullptr : &*found;
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
