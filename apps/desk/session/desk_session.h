// The embedded host at work on one drawing: opening and keeping it, running commands on it, and taking steps back.
// No windows here.
#pragma once

#include "host/embedded/embedded_host.h"
#include "host/embedded/module_host.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fenmark::desk {

// What one step did, for the name of its undoing.
enum class StepKind { Import, Layer, Zone, LayerName, LayerColour, LayerGone };

struct Step {
    StepKind kind;
    drawing::Drawing::Mark before;
    std::uint64_t serial = 0;                // no two steps of a session have the same one
    std::vector<drawing::Layer> layers = {}; // of a step that changed the list of layers: the list on its other side
};

// A step that was taken back, and what went with it.
struct UndoneStep {
    Step step;
    drawing::Drawing::Removed removed;
};

// One run of a command: whether it came to its end, and what it left.
struct CommandRun {
    Outcome outcome;
    bool changed = false;
    std::string logPath;    // the log that the command wrote; empty for none
    std::string readIn;     // the encoding that the command read its file in, "UTF-8"; empty if it read none
    std::string file;       // that it read, whole path; empty if it read none
    std::string passedOver; // lines passed over: a line a kind, with number, tab and kind
    std::string doubts;     // records taken otherwise than they look: a line a kind, with number, first line and name
    std::vector<drawing::MdDbObjectId> earlier; // imports of a file of that name, the last one last
    host::embedded::LayoutNotes notes;
};

class DeskSession {
  public:
    DeskSession();

    host::embedded::EmbeddedHost& host() { return host_; }
    host::embedded::ModuleHost& modules() { return modules_; }
    drawing::Drawing& drawing() { return host_.drawing(); }
    const drawing::Drawing& drawing() const { return host_.currentDocument()->drawing(); }

    // The first of the paths where there is a file is loaded.
    Outcome loadModule(const std::vector<std::string>& paths);

    void newDrawing();
    // On failure the drawing at hand stays open.
    Outcome open(const std::string& path);
    // With the texts that are kept with the drawing, in one transaction.
    Outcome save(const std::string& path, const drawing::TextChanges& texts = {});
    // Opens what a copy holds as a drawing without a file.
    Outcome openCopy(const std::string& path);
    // Writes a copy of the drawing as it stands; what the drawing's own file holds does not change.
    Outcome writeCopy(const std::string& path, const drawing::DrawingTexts& texts = {}) const;
    // Changes with each step, so that a copy need not be written twice.
    std::uint64_t state() const { return serialNow(); }
    // Where the drawing is kept; empty for a new one.
    const std::string& path() const { return host_.currentDocument()->store().path(); }
    // What is odd about the drawing that was opened: what was left out, or read otherwise than it stands.
    const std::vector<drawing::StoreNote>& notes() const { return host_.currentDocument()->store().notes(); }
    // True if closing the drawing would lose something. Steps taken back or made again to the state that was saved
    // leave nothing to lose.
    bool hasChanges() const;

    // Runs a command of the module. All that it makes is one step. The path is that of a file that the command is to
    // begin with, or empty.
    CommandRun run(std::string_view command, const std::string& pendingFile = {});
    // How SIMA files are read: "auto" as the bytes of each show, or the name of an encoding.
    void setEncoding(const std::string& setting) { encoding_ = setting; }
    const std::string& encoding() const { return encoding_; }
    bool isRunning() const { return running_; }
    // Called while a command runs, with the file that its user looks at.
    void onPreview(std::function<void(const std::string& path)> handler) { previewHandler_ = std::move(handler); }

    // False if there is a layer of that name already.
    bool addLayer(const std::string& name);
    // Each is one step. The first layer keeps its name and stays: hosts and other programs count on it.
    bool mayRename(std::size_t layer) const;
    bool mayRemove(std::size_t layer) const; // neither the first nor the current one, and without objects
    // False if that may not be, or if nothing would change.
    bool renameLayer(std::size_t layer, const std::string& name);
    bool setLayerColour(std::size_t layer, const std::optional<drawing::Colour>& colour);
    bool removeLayer(std::size_t layer);
    void setZone(int zone);

    const std::vector<Step>& steps() const { return steps_; }
    // Takes the last step back; false if there is none.
    bool undo();
    // Steps taken back, the next one to be made again last. A new step forgets them.
    const std::vector<UndoneStep>& undoneSteps() const { return undone_; }
    // Makes the step taken back last again, with the objects that it made; false if there is none.
    bool redo();
    // Removes imports with all that they made, as for a file that was imported again. There is no way back: steps
    // before this are forgotten.
    void removeImports(const std::vector<drawing::MdDbObjectId>& imports);

  private:
    static constexpr std::uint64_t kNeverSaved = ~std::uint64_t{0};

    void noteRoute(const std::string& text);
    std::uint64_t serialNow() const { return steps_.empty() ? bottomSerial_ : steps_.back().serial; }
    void noteImport(CommandRun& run, std::uint64_t firstId);
    // Makes a new document current that `read` fills; on failure the old one stays.
    Outcome openBy(const std::function<Outcome(host::embedded::Document&)>& read);
    void replaceDocument(host::embedded::Document& old);
    bool keepStep(StepKind kind, const drawing::Drawing::Mark& before);
    bool changeLayers(StepKind kind, std::vector<drawing::Layer> layers);
    bool changeLayersBack(Step& step);

    host::embedded::EmbeddedHost host_;
    host::embedded::ModuleHost modules_; // gone before the host that its modules know
    std::vector<Step> steps_;
    std::vector<UndoneStep> undone_;
    std::function<void(const std::string&)> previewHandler_;
    std::string encoding_ = "auto";
    bool running_ = false;
    std::uint64_t lastSerial_ = 0;
    std::uint64_t bottomSerial_ = 0;          // stands for the state below the first step
    std::uint64_t savedSerial_ = kNeverSaved; // of the state that the file holds
};

// Where Fenmark.mdm may lie: named by the environment, beside the program, in the installation.
std::vector<std::string> modulePaths(const std::string& programFolder);

} // namespace fenmark::desk
