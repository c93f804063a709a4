// The application object, the rule for the map modules and the data manager, against a surface that writes all down.
#include "module/map_modules.h"
#include "module/mdrx_app.h"
#include "module/thread_locale.h"
#include "module_app/recording_surface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <thread>

namespace fenmark::module {
namespace {

using Calls = std::vector<std::string>;

struct ModuleApp : ::testing::Test {
    test::RecordingSurface recorded;
    ModuleApp() { test::surface = &recorded; }
    ~ModuleApp() override { test::surface = nullptr; }

    void loaded(std::vector<mirdane::ResultEntry> entries) { recorded.loadedModules = std::move(entries); }
    static mirdane::ResultEntry text(const char* name) { return {mirdane::kStringEntry, name}; }
    Calls loads() {
        loadMapModules();
        return recorded.calls;
    }
};

void firstCommand() {}
void secondCommand() {}
int answerSeven() {
    return 7;
}
int answerEight() {
    return 8;
}

// An application with entries in all of its tables.
class FullApp : public MdRxMdmApp {
  public:
    void setFlags(bool unlocked, bool multiDocument) {
        unlocked_ = unlocked;
        multiDocument_ = multiDocument;
    }

  protected:
    const std::vector<mirdane::MdRxClass*>& classes() const override { return classes_; }
    const std::vector<Command>& commands() const override { return commands_; }
    const std::vector<Callable>& callables() const override { return callables_; }
    void* resourceInstance() const override { return const_cast<FullApp*>(this); }

  private:
    mirdane::MdRxClass first_;
    mirdane::MdRxClass second_;
    std::vector<mirdane::MdRxClass*> classes_{&first_, &second_};
    std::vector<Command> commands_{{"GROUP", "One", mirdane::kModalCommand, firstCommand},
                                   {"GROUP", "Two", 0, secondCommand}};
    std::vector<Callable> callables_{{"seven", 1, answerSeven}, {"eight", 2, answerEight}};
};

class EmptyApp : public MdRxMdmApp {
  protected:
    const std::vector<Command>& commands() const override { return commands_; }
    const std::vector<Callable>& callables() const override { return callables_; }
    void* resourceInstance() const override { return nullptr; }

  private:
    std::vector<Command> commands_;
    std::vector<Callable> callables_;
};

TEST_F(ModuleApp, AHostWithoutARegistryGetsAnAnswer) {
    recorded.hasRegistry = false;
    FullApp app;
    EXPECT_NE(dispatchMessage(app, mirdane::kInitAppMessage, nullptr), 0);
    EXPECT_EQ(dispatchMessage(app, mirdane::kUnloadAppMessage, nullptr), 0);
    EXPECT_TRUE(recorded.commands.empty());
}

TEST_F(ModuleApp, CommandsThatTheHostRefusedAreNotRemoved) {
    FullApp app;
    recorded.addStatus = 1;
    dispatchMessage(app, mirdane::kInitAppMessage, nullptr);
    recorded.calls.clear();
    dispatchMessage(app, mirdane::kUnloadAppMessage, nullptr);
    EXPECT_EQ(std::count(recorded.calls.begin(), recorded.calls.end(), "remove GROUP One"), 0);
    recorded.addStatus = 0;
    dispatchMessage(app, mirdane::kInitAppMessage, nullptr);
    dispatchMessage(app, mirdane::kUnloadAppMessage, nullptr);
    EXPECT_EQ(std::count(recorded.calls.begin(), recorded.calls.end(), "remove GROUP One"), 1);
}

TEST_F(ModuleApp, TheLocaleIsThatOfItsThread) {
    setThreadLocale(kJapaneseLocale);
    EXPECT_EQ(threadLocale(), 1041);
    int elsewhere = -1;
    std::thread([&] { elsewhere = threadLocale(); }).join();
    EXPECT_EQ(elsewhere, 0);
}

TEST_F(ModuleApp, StartsWithTheLinkerThenTheClassesThenTheCommands) {
    FullApp app;
    EXPECT_EQ(app.initApp(nullptr), 0);
    EXPECT_EQ(recorded.calls, (Calls{"unlock", "multi-document", "build classes", "add One", "add Two"}));
    ASSERT_EQ(recorded.commands.size(), 2U);
    const mirdane::CommandEntry& entry = recorded.commands[0];
    EXPECT_EQ(entry.resourceInstance, &app);
    EXPECT_EQ(entry.group, "GROUP");
    EXPECT_EQ(entry.globalName, "One");
    EXPECT_EQ(entry.localName, "One");
    EXPECT_EQ(entry.flags, 1U);
    EXPECT_EQ(entry.handler, &firstCommand);
}

TEST_F(ModuleApp, TellsTheLinkerOnlyWhatItsFlagsSay) {
    FullApp app;
    app.setFlags(true, false);
    app.initApp(nullptr);
    EXPECT_EQ(recorded.calls.at(0), "unlock");
    EXPECT_EQ(recorded.calls.at(1), "build classes");
    recorded.calls.clear();
    app.setFlags(false, true);
    app.initApp(nullptr);
    EXPECT_EQ(recorded.calls.at(0), "multi-document");
    EXPECT_EQ(recorded.calls.at(1), "build classes");
}

TEST_F(ModuleApp, WithoutClassesNoHierarchyIsBuilt) {
    EmptyApp app;
    app.initApp(nullptr);
    EXPECT_EQ(recorded.calls, (Calls{"unlock", "multi-document"}));
    recorded.calls.clear();
    EXPECT_EQ(app.unloadApp(nullptr), 0);
    EXPECT_TRUE(recorded.calls.empty());
}

TEST_F(ModuleApp, AtItsUnloadingTheClassesGoBeforeTheCommands) {
    FullApp app;
    EXPECT_EQ(app.unloadApp(nullptr), 0);
    EXPECT_EQ(recorded.calls, (Calls{"delete class", "delete class", "remove GROUP One", "remove GROUP Two"}));
}

TEST_F(ModuleApp, CallableFunctionsLiveFromTheLoadOfADrawingToItsUnload) {
    FullApp app;
    EXPECT_EQ(app.loadDrawing(nullptr), 0);
    EXPECT_EQ(recorded.calls, (Calls{"defun seven 1", "register 1", "defun eight 2", "register 2"}));
    recorded.calls.clear();
    EXPECT_EQ(app.unloadDrawing(nullptr), 0);
    EXPECT_EQ(recorded.calls, (Calls{"undef seven 1", "undef eight 2"}));
}

TEST_F(ModuleApp, ACallReachesTheFunctionOfItsCode) {
    FullApp app;
    recorded.functionCode = 2;
    EXPECT_EQ(app.invokeFunction(nullptr), 8);
    recorded.functionCode = 1;
    EXPECT_EQ(app.invokeFunction(nullptr), 7);
    recorded.functionCode = 3;
    EXPECT_EQ(app.invokeFunction(nullptr), 0);
    EmptyApp none;
    EXPECT_EQ(none.invokeFunction(nullptr), 0);
}

// Message 1 is the first operation, and so on; message 0 is the sixteenth.
TEST_F(ModuleApp, EveryMessageReachesItsOwnOperation) {
    struct Numbered : MdRxDbmApp {
        int initApp(void*) override { return 1; }
        int unloadApp(void*) override { return 2; }
        int loadDrawing(void*) override { return 3; }
        int unloadDrawing(void*) override { return 4; }
        int invokeFunction(void*) override { return 5; }
        int message6(void*) override { return 6; }
        int message7(void*) override { return 7; }
        int message8(void*) override { return 8; }
        int message9(void*) override { return 9; }
        int message10(void*) override { return 10; }
        int message11(void*) override { return 11; }
        int message12(void*) override { return 12; }
        int message13(void*) override { return 13; }
        int message14(void*) override { return 14; }
        int message15(void*) override { return 15; }
        int message0(void*) override { return 16; }
    } app;
    for (int message = 1; message <= 15; ++message) {
        EXPECT_EQ(dispatchMessage(app, message, nullptr), message);
    }
    EXPECT_EQ(dispatchMessage(app, 0, nullptr), 16);
    for (const int message : {-1, 16, 1000}) {
        EXPECT_EQ(dispatchMessage(app, message, nullptr), 0) << message;
    }
}

TEST_F(ModuleApp, AMessageHandsItsPointerOn) {
    struct Keeper : MdRxDbmApp {
        void* given = nullptr;
        int loadDrawing(void* package) override {
            given = package;
            return 0;
        }
    } app;
    int package = 0;
    dispatchMessage(app, mirdane::kLoadDrawingMessage, &package);
    EXPECT_EQ(app.given, &package);
}

TEST_F(ModuleApp, AnEmptyListLoadsBothMapModules) {
    EXPECT_EQ(loads(), (Calls{"load mdmap.mdm", "load MdMapAde.mdm"}));
}

TEST_F(ModuleApp, WithBothMapModulesLoadedNoLoadIsIssued) {
    loaded({text("other.mdm"), text("MdMap.mdm"), text("MDMAPADE.MDM")});
    EXPECT_EQ(loads(), Calls{});
}

TEST_F(ModuleApp, OnlyWhatIsMissingIsLoaded) {
    loaded({text("mdmapade.mdm")});
    EXPECT_EQ(loads(), Calls{"load mdmap.mdm"});
    recorded.calls.clear();
    loaded({text("mdmap.mdm")});
    EXPECT_EQ(loads(), Calls{"load MdMapAde.mdm"});
}

TEST_F(ModuleApp, EntriesOfAnotherKindThanTextsAreNoModules) {
    constexpr int kIntegerEntry = 5003;
    loaded({{kIntegerEntry, "mdmap.mdm"}, {kIntegerEntry, "mdmapade.mdm"}});
    EXPECT_EQ(loads(), (Calls{"load mdmap.mdm", "load MdMapAde.mdm"}));
}

TEST_F(ModuleApp, ALoadThatFailsIsNotLookedAt) {
    recorded.loadStatus = 1;
    EXPECT_EQ(loads(), (Calls{"load mdmap.mdm", "load MdMapAde.mdm"}));
}

TEST_F(ModuleApp, NamesThatMerelyHoldThatOfAMapModuleAreOthers) {
    loaded({text("c:\\host\\mdmap.mdm"), text("mdmapade.mdm.bak")});
    EXPECT_EQ(loads(), (Calls{"load mdmap.mdm", "load MdMapAde.mdm"}));
}

class Documents : public mirdane::MdApDocManager {
  public:
    mirdane::MdApDocument* curDocument() const override { return nullptr; }
    void addReactor(mirdane::MdApDocManagerReactor* reactor) override { reactors.push_back(reactor); }
    void removeReactor(mirdane::MdApDocManagerReactor* reactor) override { std::erase(reactors, reactor); }
    std::vector<mirdane::MdApDocManagerReactor*> reactors;
};

struct Data {};

TEST_F(ModuleApp, TheDataManagerIsAReactorWhileItLives) {
    Documents documents;
    recorded.documents = &documents;
    {
        mirdane::MdApDataManager<Data> manager;
        EXPECT_EQ(documents.reactors, std::vector<mirdane::MdApDocManagerReactor*>{&manager});
    }
    EXPECT_TRUE(documents.reactors.empty());
}

TEST_F(ModuleApp, TheDataManagerDropsTheEntryOfADocumentThatEnds) {
    Documents documents;
    recorded.documents = &documents;
    mirdane::MdApDataManager<Data> manager;
    mirdane::MdApDocument first;
    mirdane::MdApDocument second;
    EXPECT_EQ(manager.size(), 0U);
    manager.docData(&first);
    EXPECT_EQ(&manager.docData(&second), &manager.docData(&second));
    EXPECT_EQ(manager.size(), 2U);
    documents.reactors.at(0)->documentToBeDestroyed(&first);
    EXPECT_EQ(manager.size(), 1U);
    documents.reactors.at(0)->documentToBeDestroyed(&first);
    EXPECT_EQ(manager.size(), 1U) << "a document without an entry";
}

TEST_F(ModuleApp, TheDataManagerAsksNothingOfADocumentManagerThatIsGone) {
    Documents documents;
    recorded.documents = &documents;
    auto manager = std::make_unique<mirdane::MdApDataManager<Data>>();
    recorded.documents = nullptr;
    manager.reset();
    EXPECT_EQ(documents.reactors.size(), 1U) << "nobody was there to be told";
}

} // namespace
} // namespace fenmark::module
