// The declared host surface, modules: messages to a module, its command table, callable functions, other modules.
#pragma once

#include "host/surface/database.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

namespace mirdane {

// The host's messages to a module, 0 to 15. Those without a name of their own mean nothing to this module.
enum ModuleMessage : int {
    kInitAppMessage = 1,
    kUnloadAppMessage = 2,
    kLoadDrawingMessage = 3,
    kUnloadDrawingMessage = 4,
    kInvokeFunctionMessage = 5,
    kLastMessage = 15,
};

inline constexpr int kModuleApiVersion = 1;

using CommandHandler = void (*)();
inline constexpr std::uint32_t kModalCommand = 1; // command flag

struct CommandEntry {
    void* resourceInstance = nullptr;
    std::string_view group;
    std::string_view globalName;
    std::string_view localName;
    std::uint32_t flags = 0;
    CommandHandler handler = nullptr;
};

class MdEdCommandStack {
  public:
    virtual ~MdEdCommandStack() = default;
    virtual Status addCommand(const CommandEntry& entry) = 0;
    virtual Status removeCommand(std::string_view group, std::string_view globalName) = 0;
};

class MdRxDynamicLinker {
  public:
    virtual ~MdRxDynamicLinker() = default;
    virtual void unlockApplication(void* package) = 0;        // the module may be unloaded
    virtual void registerAppMultiDocument(void* package) = 0; // the module copes with several documents
};

class MdRxSysRegistry {
  public:
    virtual ~MdRxSysRegistry() = default;
    virtual MdEdCommandStack* commandStack() = 0;
    virtual MdRxDynamicLinker* dynamicLinker() = 0;
};

MdRxSysRegistry* mdrxSysRegistry();

// Custom classes of a module.
class MdRxClass {
  public:
    virtual ~MdRxClass() = default;
};
void mdrxBuildClassHierarchy();
void deleteMdRxClass(MdRxClass* entry);

// Functions that the host's scripts can call, by code.
using CallableFunction = int (*)();
int mdedDefun(std::string_view name, int code);
int mdedUndef(std::string_view name, int code);
int mdedRegFunc(CallableFunction function, int code);
int mdedGetFunCode();

// An entry of a result list: its kind, and its text where the kind is a string.
inline constexpr int kStringEntry = 5005;
struct ResultEntry {
    int kind = 0;
    std::string text;
};

std::vector<ResultEntry> mdedMdmLoaded();
Status mdedMdmLoad(std::string_view name);

// Texts that host and modules leave for each other, by name: the host's system variables. A name that is not set gives
// a status other than 0 and leaves the text as it was.
Status mdedGetSystemText(std::string_view name, std::string& text);
Status mdedSetSystemText(std::string_view name, std::string_view text);

// The file that the next run of "Fenmark" is to begin with, set by a host whose user gave it a file; empty for none.
inline constexpr std::string_view kPendingFileVariable = "FENMARKFILE";
// The log that the last run of "Fenmark" wrote, set by the module; empty if the run wrote none.
inline constexpr std::string_view kLogFileVariable = "FENMARKLOG";

// Whether clothoids get their PI in plan, set by the host: any text but the empty one.
inline constexpr std::string_view kPlanTangentsVariable = "FENMARKPLANTANGENTS";

// How "Fenmark" reads its files, set by the host: "auto" takes what the bytes of each file show; the name of an encoding
// takes that one. Code page 932 where it is not set or is anything else.
inline constexpr std::string_view kEncodingVariable = "FENMARKENCODING";
// The name of the encoding that the last run of "Fenmark" read its file in, set by the module; empty if it read none.
inline constexpr std::string_view kReadInVariable = "FENMARKREADIN";

// What the last run of "Fenmark" read, set by the module; empty if it read nothing. The whole path of the file.
inline constexpr std::string_view kImportedFileVariable = "FENMARKIMPORTED";
// Points, lots, polylines of routes, alignments, longitudinal and cross-section points made, and error blocks of the
// log: seven integers with blanks between.
inline constexpr std::string_view kCountsVariable = "FENMARKCOUNTS";
// The lines that the rules pass over in silence: for each kind a line with their number, a tab, and the kind.
inline constexpr std::string_view kPassedOverVariable = "FENMARKPASSEDOVER";
// The records that were taken otherwise than they look: for each kind a line with their number, the line of the first
// one, and the name of the kind, with blanks between.
inline constexpr std::string_view kDoubtsVariable = "FENMARKDOUBTS";
// The file that the user looks at in the dialog, set by the module as soon as it was chosen.
inline constexpr std::string_view kPreviewedFileVariable = "FENMARKPREVIEWED";
// The route that an alignment was just made of, set by the module: the alignment's identifier, and x, y, z of each
// point in metres, with blanks between.
inline constexpr std::string_view kRouteVariable = "FENMARKROUTE";

// Readies the host's user-interface library for a module.
void InitMdUiDLL();

// Data of a module for each document: a map that is also a reactor of the document manager.
template <typename Data>
class MdApDataManager : public MdApDocManagerReactor {
  public:
    MdApDataManager() {
        if (MdApDocManager* manager = mdDocManagerPtr()) {
            manager->addReactor(this);
        }
    }
    ~MdApDataManager() override {
        // The host may have ended its document manager before it unloads the module.
        if (MdApDocManager* manager = mdDocManagerPtr()) {
            manager->removeReactor(this);
        }
    }
    MdApDataManager(const MdApDataManager&) = delete;
    MdApDataManager& operator=(const MdApDataManager&) = delete;

    Data& docData(MdApDocument* document) {
        std::unique_ptr<Data>& data = map_[document];
        if (!data) {
            data = std::make_unique<Data>();
        }
        return *data;
    }
    std::size_t size() const { return map_.size(); }
    void documentToBeDestroyed(MdApDocument* document) override { map_.erase(document); }

  private:
    std::map<MdApDocument*, std::unique_ptr<Data>> map_;
};

} // namespace mirdane

// What every module exports towards the host.
extern "C" int mdrxEntryPoint(int message, void* package);
extern "C" int mdrxGetApiVersion();

#pragma GCC visibility pop
