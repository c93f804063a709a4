// The application object that a module shows to the host.
#include "module/mdrx_app.h"

#include <algorithm>
#include <array>

namespace fenmark::module {

namespace {

// The answer of an initialisation that could register nothing, since the host has no registry yet.
constexpr int kNoRegistry = 1;

} // namespace

int MdRxDbmApp::initApp(void* package) {
    mirdane::MdRxSysRegistry* registry = mirdane::mdrxSysRegistry();
    mirdane::MdRxDynamicLinker* linker = registry != nullptr ? registry->dynamicLinker() : nullptr;
    if (linker == nullptr) {
        return kNoRegistry;
    }
    if (unlocked_) {
        linker->unlockApplication(package);
    }
    if (multiDocument_) {
        linker->registerAppMultiDocument(package);
    }
    if (!classes().empty()) {
        mirdane::mdrxBuildClassHierarchy();
    }
    return 0;
}

int MdRxDbmApp::unloadApp(void*) {
    for (mirdane::MdRxClass* entry : classes()) {
        mirdane::deleteMdRxClass(entry);
    }
    return 0;
}

const std::vector<mirdane::MdRxClass*>& MdRxDbmApp::classes() const {
    static const std::vector<mirdane::MdRxClass*> none;
    return none;
}

int MdRxDbmApp::loadDrawing(void*) {
    return 0;
}
int MdRxDbmApp::unloadDrawing(void*) {
    return 0;
}
int MdRxDbmApp::invokeFunction(void*) {
    return 0;
}
int MdRxDbmApp::message6(void*) {
    return 0;
}
int MdRxDbmApp::message7(void*) {
    return 0;
}
int MdRxDbmApp::message8(void*) {
    return 0;
}
int MdRxDbmApp::message9(void*) {
    return 0;
}
int MdRxDbmApp::message10(void*) {
    return 0;
}
int MdRxDbmApp::message11(void*) {
    return 0;
}
int MdRxDbmApp::message12(void*) {
    return 0;
}
int MdRxDbmApp::message13(void*) {
    return 0;
}
int MdRxDbmApp::message14(void*) {
    return 0;
}
int MdRxDbmApp::message15(void*) {
    return 0;
}
int MdRxDbmApp::message0(void*) {
    return 0;
}

int MdRxMdmApp::initApp(void* package) {
    const int result = MdRxDbmApp::initApp(package);
    mirdane::MdRxSysRegistry* registry = mirdane::mdrxSysRegistry();
    mirdane::MdEdCommandStack* stack = registry != nullptr ? registry->commandStack() : nullptr;
    if (stack == nullptr) {
        return kNoRegistry;
    }
    refused_.clear();
    for (const Command& command : commands()) {
        const mirdane::Status status = stack->addCommand({.resourceInstance = resourceInstance(),
                                                          .group = command.group,
                                                          .globalName = command.name,
                                                          .localName = command.name,
                                                          .flags = command.flags,
                                                          .handler = command.handler});
        if (status != 0) {
            refused_.push_back(command.name);
        }
    }
    return result;
}

int MdRxMdmApp::unloadApp(void* package) {
    const int result = MdRxDbmApp::unloadApp(package);
    mirdane::MdRxSysRegistry* registry = mirdane::mdrxSysRegistry();
    mirdane::MdEdCommandStack* stack = registry != nullptr ? registry->commandStack() : nullptr;
    for (const Command& command : commands()) {
        if (stack != nullptr && std::ranges::find(refused_, command.name) == refused_.end()) {
            stack->removeCommand(command.group, command.name);
        }
    }
    refused_.clear();
    return result;
}

int MdRxMdmApp::loadDrawing(void*) {
    for (const Callable& callable : callables()) {
        mirdane::mdedDefun(callable.name, callable.code);
        mirdane::mdedRegFunc(callable.function, callable.code);
    }
    return 0;
}

int MdRxMdmApp::unloadDrawing(void*) {
    for (const Callable& callable : callables()) {
        mirdane::mdedUndef(callable.name, callable.code);
    }
    return 0;
}

int MdRxMdmApp::invokeFunction(void*) {
    if (callables().empty()) {
        return 0;
    }
    const int code = mirdane::mdedGetFunCode();
    for (const Callable& callable : callables()) {
        if (callable.code == code) {
            return callable.function();
        }
    }
    return 0;
}

int dispatchMessage(MdRxDbmApp& app, int message, void* package) {
    using Operation = int (MdRxDbmApp::*)(void*);
    static constexpr std::array<Operation, mirdane::kLastMessage + 1> operations{
        &MdRxDbmApp::message0,      &MdRxDbmApp::initApp,        &MdRxDbmApp::unloadApp, &MdRxDbmApp::loadDrawing,
        &MdRxDbmApp::unloadDrawing, &MdRxDbmApp::invokeFunction, &MdRxDbmApp::message6,  &MdRxDbmApp::message7,
        &MdRxDbmApp::message8,      &MdRxDbmApp::message9,       &MdRxDbmApp::message10, &MdRxDbmApp::message11,
        &MdRxDbmApp::message12,     &MdRxDbmApp::message13,      &MdRxDbmApp::message14, &MdRxDbmApp::message15,
    };
    if (message < 0 || message > mirdane::kLastMessage) {
        return 0;
    }
    return (app.*operations[static_cast<std::size_t>(message)])(package);
}

} // namespace fenmark::module
