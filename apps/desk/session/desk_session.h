// The embedded host at work on one drawing: opening and keeping it, running commands on it, and taking steps back.
// No windows here.
#pragma once

#include "host/embedded/embedded_host.h"
#include "host/embedded/module_host.h"

#include <functional>
#include <string>
#include <vector>

namespace fenmark::desk {

// What one step did, for the name of its undoing.
enum class StepKind { Import, Layer, Zone };

struct Step {
    StepKind kind;
    drawing::Drawing::Mark before;
    std::string logPath; // the log that an import wrote; empty for none
};

// A step that was taken back, and what went with it.
struct UndoneStep {
    Step step;
    drawing::Drawing::Removed removed;
};

struct CommandOutcome {
    bool ok = false;
    std::string message; // why not, in one line
    bool changed = false;
    std::string logPath; // the log that the command wrote; empty for none
    std::string readIn;  // the encoding that the command read its file in, "UTF-8"; empty if it read none
    host::embedded::LayoutNotes notes;
};

class DeskSession {
  public:
    DeskSession() = default;

    host::embedded::EmbeddedHost& host() { return host_; }
    host::embedded::ModuleHost& modules() { return modules_; }
    drawing::Drawing& drawing() { return host_.drawing(); }
    const drawing::Drawing& drawing() const { return host_.currentDocument()->drawing(); }

    // The first of the paths where there is a file is loaded.
    host::embedded::ModuleResult loadModule(const std::vector<std::string>& paths);

    void newDrawing();
    // On failure the drawing at hand stays open.
    drawing::StoreResult open(const std::string& path);
    drawing::StoreResult save(const std::string& path);
    // Where the drawing is kept; empty for a new one.
    const std::string& path() const { return host_.currentDocument()->store().path(); }
    // True if closing the drawing would lose something.
    bool hasChanges() const;

    // Runs a command of the module. All that it makes is one step. The path is that of a file that the command is to
    // begin with, or empty.
    CommandOutcome run(std::string_view command, const std::string& pendingFile = {});
    // How SIMA files are read: "auto" as the bytes of each show, or the name of an encoding.
    void setEncoding(const std::string& setting) { encoding_ = setting; }
    const std::string& encoding() const { return encoding_; }
    bool isRunning() const { return running_; }

    // False if there is a layer of that name already.
    bool addLayer(const std::string& name);
    void setZone(int zone);

    const std::vector<Step>& steps() const { return steps_; }
    // Takes the last step back; false if there is none.
    bool undo();
    // Steps taken back, the next one to be made again last. A new step forgets them.
    const std::vector<UndoneStep>& undoneSteps() const { return undone_; }
    // Makes the step taken back last again, with the objects that it made; false if there is none.
    bool redo();
    // The last import among the steps that wrote a log; null if there is none.
    const Step* lastImport() const;

  private:
    void replaceDocument(host::embedded::Document& old);
    bool keepStep(StepKind kind, const drawing::Drawing::Mark& before, const std::string& logPath = {});

    host::embedded::EmbeddedHost host_;
    host::embedded::ModuleHost modules_; // gone before the host that its modules know
    std::vector<Step> steps_;
    std::vector<UndoneStep> undone_;
    std::string encoding_ = "auto";
    bool running_ = false;
};

// Where Fenmark.mdm may lie: named by the environment, beside the program, in the installation.
std::vector<std::string> modulePaths(const std::string& programFolder);

} // namespace fenmark::desk
