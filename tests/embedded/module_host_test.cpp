// The host of modules as a module calls it, and without one: commands, functions, map modules, texts.
#include "host/embedded/module_host.h"

#include "host/surface/module.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace fenmark::host::embedded {
namespace {

// Handlers of commands are plain functions.
int runs = 0;
void countRun() {
    ++runs;
}
void raiseError() {
    throw std::runtime_error("the reason");
}
void raiseNumber() {
    throw 7;
}
Outcome nested;
void runCount() {
    nested = ModuleHost::current()->run("count");
}
void runAside() {
    nested = ModuleHost::current()->run("aside");
}

class ModuleSurface : public ::testing::Test {
  protected:
    ModuleHost host_;
    std::vector<std::string> said_;

    void SetUp() override {
        runs = 0;
        nested = {};
    }
    static mirdane::Status add(std::string_view name, mirdane::CommandHandler handler,
                               std::uint32_t flags = mirdane::kModalCommand, std::string_view group = "G") {
        mirdane::CommandEntry entry;
        entry.group = group;
        entry.globalName = name;
        entry.localName = name == "count" ? "数える" : name;
        entry.flags = flags;
        entry.handler = handler;
        return mirdane::mdrxSysRegistry()->commandStack()->addCommand(entry);
    }
};

TEST_F(ModuleSurface, ACommandIsKnownOnceInItsGroupAndByBothNames) {
    EXPECT_EQ(add("count", countRun), 0);
    EXPECT_EQ(add("COUNT", raiseError), 1) << "case does not matter";
    EXPECT_EQ(add("count", raiseError, mirdane::kModalCommand, "other"), 0);
    EXPECT_TRUE(host_.run("Count"));
    EXPECT_TRUE(host_.run("数える"));
    EXPECT_EQ(runs, 2) << "the first of that name";
    mirdane::MdEdCommandStack& stack = *mirdane::mdrxSysRegistry()->commandStack();
    EXPECT_EQ(stack.removeCommand("G", "none"), 1);
    EXPECT_EQ(stack.removeCommand("G", "COUNT"), 0);
    ASSERT_EQ(host_.commands().size(), 1U);
    EXPECT_EQ(host_.commands()[0].group, "other");
}

TEST_F(ModuleSurface, WhatACommandThrowsEndsItWithOneLine) {
    add("error", raiseError);
    add("number", raiseNumber);
    add("count", countRun);
    EXPECT_EQ(host_.run("error").message.english, "error: the reason") << "also where nobody listens";
    host_.onLine([this](const Worded& line) { said_.push_back(line.english); });
    EXPECT_FALSE(host_.run("error"));
    const Outcome unknown = host_.run("number");
    EXPECT_EQ(unknown.message.english, "number: ended by an unknown exception");
    EXPECT_EQ(unknown.message.japanese, "number: 不明な例外で終わりました");
    EXPECT_EQ(said_, (std::vector<std::string>{"error: the reason", "number: ended by an unknown exception"}));
    EXPECT_TRUE(host_.run("count")) << "no command is running any more";
}

TEST_F(ModuleSurface, OnlyAModalCommandWaitsForTheOthers) {
    add("count", countRun);
    add("aside", countRun, 0);
    add("runCount", runCount);
    add("runAside", runAside);
    EXPECT_TRUE(host_.run("runCount"));
    EXPECT_EQ(nested.message.english, "count: another command is running");
    EXPECT_EQ(runs, 0);
    EXPECT_TRUE(host_.run("runAside"));
    EXPECT_TRUE(nested);
    EXPECT_EQ(runs, 1);
}

TEST_F(ModuleSurface, FunctionsAreKnownByTheirNames) {
    EXPECT_EQ(mirdane::mdedDefun("f", 3), 0);
    EXPECT_EQ(host_.callableFunctions(), (std::map<std::string, int>{{"f", 3}}));
    EXPECT_EQ(mirdane::mdedUndef("g", 3), 1);
    EXPECT_EQ(mirdane::mdedUndef("f", 3), 0);
    EXPECT_TRUE(host_.callableFunctions().empty());
    EXPECT_EQ(mirdane::mdedRegFunc(nullptr, 3), 0);
    EXPECT_EQ(mirdane::mdedGetFunCode(), -1) << "no script ever calls one";
}

TEST_F(ModuleSurface, OnlyTheMapModulesAreLoadedByName) {
    EXPECT_EQ(mirdane::mdedMdmLoad("other.mdm"), 1);
    EXPECT_EQ(mirdane::mdedMdmLoad("MDMAP.mdm"), 0);
    EXPECT_EQ(mirdane::mdedMdmLoad("mdmap.mdm"), 0);
    EXPECT_EQ(mirdane::mdedMdmLoad("mdmapade.mdm"), 0);
    const std::vector<mirdane::ResultEntry> loaded = mirdane::mdedMdmLoaded();
    ASSERT_EQ(loaded.size(), 2U) << "each of them once";
    EXPECT_EQ(loaded[0].kind, mirdane::kStringEntry);
    EXPECT_EQ(loaded[0].text, "MDMAP.mdm");
    EXPECT_EQ(host_.loadRequests().size(), 4U);
}

TEST_F(ModuleSurface, TextsAreLeftForEachOther) {
    std::string text = "as before";
    EXPECT_EQ(mirdane::mdedGetSystemText("A", text), 1);
    EXPECT_EQ(text, "as before");
    EXPECT_EQ(mirdane::mdedSetSystemText("A", "1"), 0) << "also where nobody listens";
    host_.onSystemText(
        [this](std::string_view name, const std::string& set) { said_.push_back(std::string(name) + "=" + set); });
    EXPECT_EQ(mirdane::mdedSetSystemText("A", "2"), 0);
    EXPECT_EQ(said_, std::vector<std::string>{"A=2"});
    EXPECT_EQ(mirdane::mdedGetSystemText("A", text), 0);
    EXPECT_EQ(text, "2");
    EXPECT_EQ(host_.systemText("B"), "");
}

TEST_F(ModuleSurface, CustomClassesAreTheModulesOwn) {
    struct Counting : mirdane::MdRxClass {
        explicit Counting(int& classes) : left(classes) { ++left; }
        ~Counting() override { --left; }
        int& left;
    };
    int left = 0;
    auto* made = new Counting(left);
    mirdane::mdrxBuildClassHierarchy();
    EXPECT_EQ(left, 1);
    mirdane::deleteMdRxClass(made);
    EXPECT_EQ(left, 0);
}

// A module may be loaded before a host has documents, and be unloaded after they went.
TEST(ModuleData, IsKeptForEachDocumentAlsoWithoutAManager) {
    ASSERT_EQ(mirdane::mdDocManagerPtr(), nullptr);
    mirdane::MdApDataManager<int> data;
    data.docData(nullptr) = 7;
    EXPECT_EQ(data.docData(nullptr), 7);
    EXPECT_EQ(data.size(), 1U);
    data.documentToBeDestroyed(nullptr);
    EXPECT_EQ(data.size(), 0U);
}

TEST(ModuleSurfaceWithoutAHost, RefusesEverything) {
    ASSERT_EQ(ModuleHost::current(), nullptr);
    EXPECT_EQ(mirdane::mdrxSysRegistry(), nullptr);
    EXPECT_EQ(mirdane::mdedDefun("f", 3), 1);
    EXPECT_EQ(mirdane::mdedUndef("f", 3), 1);
    EXPECT_EQ(mirdane::mdedMdmLoad("mdmap.mdm"), 1);
    EXPECT_TRUE(mirdane::mdedMdmLoaded().empty());
    EXPECT_EQ(mirdane::mdedSetSystemText("A", "1"), 1);
    std::string text = "as before";
    EXPECT_EQ(mirdane::mdedGetSystemText("A", text), 1);
    EXPECT_EQ(text, "as before");
    mirdane::InitMdUiDLL();
    ModuleHost later;
    EXPECT_EQ(later.uiReadied(), 0);
    EXPECT_FALSE(later.hasSystemText("A"));
    mirdane::InitMdUiDLL();
    EXPECT_EQ(later.uiReadied(), 1);
}

} // namespace
} // namespace fenmark::host::embedded
