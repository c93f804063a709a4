// Loads add-in modules at run time, sends them the host's messages, keeps their commands, and unloads them.
#include "host/embedded/module_host.h"

#include "platform/library.h"
#include "platform/paths.h"
#include "values/ascii_case.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace fenmark::host::embedded {

namespace {

ModuleHost* currentModuleHost = nullptr;

bool sameName(std::string_view a, std::string_view b) {
    return asciiLower(a) == asciiLower(b);
}

using EntryPoint = int(int, void*);
using GetVersion = int();

} // namespace

struct ModuleHost::Module {
    std::string name; // file name
    platform::Library library;
    EntryPoint* entry = nullptr;
    bool mayUnload = false;
};

class ModuleHost::Registry : public mirdane::MdRxSysRegistry,
                             public mirdane::MdEdCommandStack,
                             public mirdane::MdRxDynamicLinker {
  public:
    explicit Registry(ModuleHost& host) : host_(host) {}

    mirdane::MdEdCommandStack* commandStack() override { return this; }
    mirdane::MdRxDynamicLinker* dynamicLinker() override { return this; }

    mirdane::Status addCommand(const mirdane::CommandEntry& entry) override {
        for (const RegisteredCommand& command : host_.commands_) {
            if (command.group == entry.group && sameName(command.globalName, entry.globalName)) {
                return 1;
            }
        }
        host_.commands_.push_back({std::string(entry.group), std::string(entry.globalName),
                                   std::string(entry.localName), entry.flags, entry.handler});
        return 0;
    }
    mirdane::Status removeCommand(std::string_view group, std::string_view globalName) override {
        const auto removed = std::erase_if(host_.commands_, [&](const RegisteredCommand& command) {
            return command.group == group && sameName(command.globalName, globalName);
        });
        return removed == 0 ? 1 : 0;
    }
    void unlockApplication(void* package) override {
        if (package != nullptr) {
            static_cast<Module*>(package)->mayUnload = true;
        }
    }
    // Commands run in the current document: nothing hangs on whether a module copes with several.
    void registerAppMultiDocument(void*) override {}

  private:
    ModuleHost& host_;
};

ModuleHost::ModuleHost() : registry_(std::make_unique<Registry>(*this)) {
    currentModuleHost = this;
}

ModuleHost::~ModuleHost() {
    running_ = 0;
    while (!modules_.empty()) {
        modules_.back()->mayUnload = true;
        (void)unload(modules_.back()->name);
    }
    if (currentModuleHost == this) {
        currentModuleHost = nullptr;
    }
}

ModuleHost* ModuleHost::current() {
    return currentModuleHost;
}

mirdane::MdRxSysRegistry& ModuleHost::registry() {
    return *registry_;
}

ModuleHost::Module* ModuleHost::find(std::string_view name) {
    for (const auto& module : modules_) {
        if (sameName(module->name, name)) {
            return module.get();
        }
    }
    return nullptr;
}

Outcome ModuleHost::load(const std::string& path) {
    const std::string name = platform::utf8Of(platform::pathOf(path).filename());
    if (find(name) != nullptr) {
        return failed({name + ": is loaded already", name + ": 読み込まれています"});
    }
    platform::Library library;
    if (const Outcome opened = library.open(path); !opened) {
        return failed({"cannot be loaded: " + opened.message.english, "読み込めません: " + opened.message.japanese});
    }
    const auto refuse = [&](const char* english, const char* japanese) {
        return failed({name + ": " + english, name + ": " + japanese});
    };
    GetVersion* const version = library.function<GetVersion>("mdrxGetApiVersion");
    EntryPoint* const entry = library.function<EntryPoint>("mdrxEntryPoint");
    if (version == nullptr || entry == nullptr) {
        return refuse("is no module: it lacks the entry points", "モジュールではありません: 入口の関数がありません");
    }
    if (version() != mirdane::kModuleApiVersion) {
        return refuse("is a module for another version of the host", "別の版のホストのモジュールです");
    }

    auto module = std::make_unique<Module>();
    module->name = name;
    module->library = std::move(library);
    module->entry = entry;
    Module* loaded = module.get();
    modules_.push_back(std::move(module));
    loadedNames_.push_back(name);
    loaded->entry(mirdane::kInitAppMessage, loaded);
    loaded->entry(mirdane::kLoadDrawingMessage, loaded);
    return {};
}

Outcome ModuleHost::unload(std::string_view name) {
    Module* module = find(name);
    if (module == nullptr) {
        return failed({std::string(name) + ": is not loaded", std::string(name) + ": 読み込まれていません"});
    }
    if (running_ > 0) {
        return failed({module->name + ": a command is running", module->name + ": コマンドの実行中です"});
    }
    if (!module->mayUnload) {
        return failed({module->name + ": does not allow its unloading", module->name + ": 取り外しを許していません"});
    }
    module->entry(mirdane::kUnloadDrawingMessage, module);
    module->entry(mirdane::kUnloadAppMessage, module);
    module->library.close();
    std::erase_if(loadedNames_, [&](const std::string& loaded) { return sameName(loaded, name); });
    std::erase_if(modules_, [&](const auto& candidate) { return candidate.get() == module; });
    return {};
}

void ModuleHost::send(int message) {
    for (const auto& module : modules_) {
        module->entry(message, module.get());
    }
}

Outcome ModuleHost::run(std::string_view name) {
    const auto command = std::find_if(commands_.begin(), commands_.end(), [&](const RegisteredCommand& candidate) {
        return sameName(candidate.globalName, name) || sameName(candidate.localName, name);
    });
    if (command == commands_.end()) {
        return failed({std::string(name) + ": no such command", std::string(name) + ": コマンドがありません"});
    }
    // The handler may load commands, so that the entry must not be held on to.
    const std::string title = command->globalName;
    const mirdane::CommandHandler handler = command->handler;
    if (running_ > 0 && (command->flags & mirdane::kModalCommand) != 0) {
        return failed({title + ": another command is running", title + ": 別のコマンドの実行中です"});
    }
    struct Running {
        std::int32_t& count;
        explicit Running(std::int32_t& commands) : count(commands) { ++count; }
        ~Running() { --count; }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;
    } running(running_);
    try {
        handler();
    } catch (const std::exception& error) {
        Outcome broken = failed(title + ": " + error.what());
        say(broken.message);
        return broken;
    } catch (...) {
        Outcome broken = failed({title + ": ended by an unknown exception", title + ": 不明な例外で終わりました"});
        say(broken.message);
        return broken;
    }
    return {};
}

void ModuleHost::say(const Worded& line) const {
    if (lineHandler_) {
        lineHandler_(line);
    }
}

void ModuleHost::markLoaded(std::string_view name) {
    for (const std::string& loaded : loadedNames_) {
        if (sameName(loaded, name)) {
            return;
        }
    }
    loadedNames_.emplace_back(name);
}

// The services of the map modules are built into this host, so that loading one is a matter of the list. Any other
// name is refused: modules come by their path.
mirdane::Status ModuleHost::loadByName(std::string_view name) {
    loadRequests_.emplace_back(name);
    if (!sameName(name, "mdmap.mdm") && !sameName(name, "mdmapade.mdm")) {
        return 1;
    }
    markLoaded(name);
    return 0;
}

void ModuleHost::setSystemText(std::string_view name, std::string_view text) {
    systemTexts_.insert_or_assign(std::string(name), std::string(text));
}

void ModuleHost::moduleSetSystemText(std::string_view name, std::string_view text) {
    setSystemText(name, text);
    if (systemTextHandler_) {
        systemTextHandler_(name, std::string(text));
    }
}

bool ModuleHost::hasSystemText(std::string_view name) const {
    return systemTexts_.contains(name);
}

std::string ModuleHost::systemText(std::string_view name) const {
    const auto found = systemTexts_.find(name);
    return found == systemTexts_.end() ? std::string() : found->second;
}

int ModuleHost::define(std::string_view name, int code) {
    functions_[std::string(name)] = code;
    return 0;
}

int ModuleHost::undefine(std::string_view name) {
    return functions_.erase(std::string(name)) == 0 ? 1 : 0;
}

} // namespace fenmark::host::embedded

namespace mirdane {

using fenmark::host::embedded::ModuleHost;

MdRxSysRegistry* mdrxSysRegistry() {
    return ModuleHost::current() != nullptr ? &ModuleHost::current()->registry() : nullptr;
}

// Modules here bring no custom classes; the host's own hierarchy is that of the language.
void mdrxBuildClassHierarchy() {}

void deleteMdRxClass(MdRxClass* entry) {
    delete entry;
}

int mdedDefun(std::string_view name, int code) {
    return ModuleHost::current() != nullptr ? ModuleHost::current()->define(name, code) : 1;
}

int mdedUndef(std::string_view name, int) {
    return ModuleHost::current() != nullptr ? ModuleHost::current()->undefine(name) : 1;
}

// This host has no script language, so that a function is known by name and never called.
int mdedRegFunc(CallableFunction, int) {
    return 0;
}

int mdedGetFunCode() {
    return -1;
}

std::vector<ResultEntry> mdedMdmLoaded() {
    std::vector<ResultEntry> list;
    if (ModuleHost::current() != nullptr) {
        for (const std::string& name : ModuleHost::current()->loadedNames()) {
            list.push_back({kStringEntry, name});
        }
    }
    return list;
}

Status mdedMdmLoad(std::string_view name) {
    return ModuleHost::current() != nullptr ? ModuleHost::current()->loadByName(name) : 1;
}

Status mdedGetSystemText(std::string_view name, std::string& text) {
    if (ModuleHost::current() == nullptr || !ModuleHost::current()->hasSystemText(name)) {
        return 1;
    }
    text = ModuleHost::current()->systemText(name);
    return 0;
}

Status mdedSetSystemText(std::string_view name, std::string_view text) {
    if (ModuleHost::current() == nullptr) {
        return 1;
    }
    ModuleHost::current()->moduleSetSystemText(name, text);
    return 0;
}

void InitMdUiDLL() {
    if (ModuleHost::current() != nullptr) {
        ModuleHost::current()->readyUi();
    }
}

} // namespace mirdane
