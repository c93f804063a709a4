// The module part of the host surface, written down call by call, with answers that a test sets.
#include "module_app/recording_surface.h"

#include <utility>

namespace {

using fenmark::module::test::surface;

void note(std::string call) {
    surface->calls.push_back(std::move(call));
}

class Registry : public mirdane::MdRxSysRegistry, public mirdane::MdEdCommandStack, public mirdane::MdRxDynamicLinker {
  public:
    mirdane::MdEdCommandStack* commandStack() override { return this; }
    mirdane::MdRxDynamicLinker* dynamicLinker() override { return this; }
    mirdane::Status addCommand(const mirdane::CommandEntry& entry) override {
        note("add " + std::string(entry.globalName));
        surface->commands.push_back(entry);
        return surface->addStatus;
    }
    mirdane::Status removeCommand(std::string_view group, std::string_view name) override {
        note("remove " + std::string(group) + " " + std::string(name));
        return 0;
    }
    void unlockApplication(void*) override { note("unlock"); }
    void registerAppMultiDocument(void*) override { note("multi-document"); }
} registry;

} // namespace

namespace mirdane {

MdRxSysRegistry* mdrxSysRegistry() {
    return surface->hasRegistry ? &registry : nullptr;
}
void mdrxBuildClassHierarchy() {
    note("build classes");
}
void deleteMdRxClass(MdRxClass*) {
    note("delete class");
}
int mdedDefun(std::string_view name, int code) {
    note("defun " + std::string(name) + " " + std::to_string(code));
    return 0;
}
int mdedUndef(std::string_view name, int code) {
    note("undef " + std::string(name) + " " + std::to_string(code));
    return 0;
}
int mdedRegFunc(CallableFunction, int code) {
    note("register " + std::to_string(code));
    return 0;
}
int mdedGetFunCode() {
    return surface->functionCode;
}
std::vector<ResultEntry> mdedMdmLoaded() {
    return surface->loadedModules;
}
Status mdedMdmLoad(std::string_view name) {
    note("load " + std::string(name));
    return surface->loadStatus;
}
MdApDocManager* mdDocManagerPtr() {
    return surface->documents;
}

} // namespace mirdane
