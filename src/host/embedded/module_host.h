// Loads add-in modules at run time, sends them the host's messages, keeps their commands, and unloads them.
#pragma once

#include "host/surface/module.h"
#include "values/outcome.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::host::embedded {

struct RegisteredCommand {
    std::string group;
    std::string globalName;
    std::string localName;
    std::uint32_t flags = 0;
    mirdane::CommandHandler handler = nullptr;
};

// Answers the module part of the declared surface while it lives. One at a time in a process.
class ModuleHost {
  public:
    ModuleHost();
    ~ModuleHost(); // unloads what is loaded
    ModuleHost(const ModuleHost&) = delete;
    ModuleHost& operator=(const ModuleHost&) = delete;

    static ModuleHost* current();

    // Loads the library, tests its version, and sends the messages of initialisation and of the open drawing.
    Outcome load(const std::string& path);
    // Sends the messages of the drawing's and the module's end and unloads the library. Refused for a module that did
    // not allow it, that is not loaded, or while a command runs. The name is the file's, in any case.
    Outcome unload(std::string_view name);
    // Sends a message to every loaded module.
    void send(int message);

    // Runs a command by its name in any case. An exception that leaves the command ends it with a line and no more. A
    // modal command is refused while another command runs.
    Outcome run(std::string_view name);
    const std::vector<RegisteredCommand>& commands() const { return commands_; }

    // Names of loaded modules as the surface lists them: the libraries, and the host's own map modules.
    const std::vector<std::string>& loadedNames() const { return loadedNames_; }
    // Counts a module of the host's own as loaded: its services are built in.
    void markLoaded(std::string_view name);
    // Names that modules asked to be loaded, in order.
    const std::vector<std::string>& loadRequests() const { return loadRequests_; }

    const std::map<std::string, int>& callableFunctions() const { return functions_; }
    std::int32_t uiReadied() const { return uiReadied_; }

    // System variables: texts that host and modules leave for each other. Empty if not set.
    void setSystemText(std::string_view name, std::string_view text);
    std::string systemText(std::string_view name) const;
    bool hasSystemText(std::string_view name) const;
    // Called with each text that a module sets, as it is set.
    using SystemTextHandler = std::function<void(std::string_view name, const std::string& text)>;
    void onSystemText(SystemTextHandler handler) { systemTextHandler_ = std::move(handler); }
    void moduleSetSystemText(std::string_view name, std::string_view text);

    // What the host says on its command line: one line at a time.
    void onLine(std::function<void(const Worded&)> handler) { lineHandler_ = std::move(handler); }

    // For the surface.
    mirdane::MdRxSysRegistry& registry();
    mirdane::Status loadByName(std::string_view name);
    int define(std::string_view name, int code);
    int undefine(std::string_view name);
    void readyUi() { ++uiReadied_; }

  private:
    struct Module;
    class Registry;

    Module* find(std::string_view name);
    void say(const Worded& line) const;

    std::vector<std::unique_ptr<Module>> modules_;
    std::vector<RegisteredCommand> commands_;
    std::vector<std::string> loadedNames_;
    std::vector<std::string> loadRequests_;
    std::map<std::string, int> functions_;
    std::map<std::string, std::string, std::less<>> systemTexts_;
    std::unique_ptr<Registry> registry_;
    std::function<void(const Worded&)> lineHandler_;
    SystemTextHandler systemTextHandler_;
    std::int32_t uiReadied_ = 0;
    std::int32_t running_ = 0; // commands at work
};

} // namespace fenmark::host::embedded
