// Modules that the host must refuse, and one that does not allow its unloading.
#include "host/embedded/embedded_host.h"
#include "host/embedded/module_host.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <dlfcn.h>

namespace fenmark::host::embedded {
namespace {

const std::string kGood = FENMARK_SMALL_MODULE;
const std::string kName = std::filesystem::path(kGood).filename().string();

class SmallModules : public ::testing::Test {
  protected:
    EmbeddedHost host_;
    ModuleHost modules_;

    // Asks the library itself while the host has it loaded; nothing otherwise.
    template <typename T>
    static T asked(const char* function, T otherwise) {
        void* const library = dlopen(kGood.c_str(), RTLD_NOW | RTLD_NOLOAD);
        if (library == nullptr) {
            return otherwise;
        }
        const T answer = reinterpret_cast<T (*)()>(dlsym(library, function))();
        dlclose(library);
        return answer;
    }
    static int messages() { return asked("smallModuleMessages", -1); }
};

TEST_F(SmallModules, OneIsToldOfItselfAndOfTheDrawingAndIsListed) {
    ASSERT_TRUE(modules_.load(kGood));
    EXPECT_EQ(messages(), 2);
    EXPECT_EQ(modules_.loadedNames(), std::vector<std::string>{kName});
    modules_.send(mirdane::kLoadDrawingMessage);
    EXPECT_EQ(messages(), 3);
    EXPECT_EQ(modules_.load(kGood).message.english, kName + ": is loaded already");
    EXPECT_EQ(messages(), 3);
}

TEST_F(SmallModules, OneThatDoesNotAllowItStaysLoadedUntilTheHostGoes) {
    {
        ModuleHost passing;
        ASSERT_TRUE(passing.load(kGood));
        const Outcome refused = passing.unload(kName);
        EXPECT_EQ(refused.message.english, kName + ": does not allow its unloading");
        EXPECT_EQ(refused.message.japanese, kName + ": 取り外しを許していません");
        EXPECT_EQ(passing.loadedNames().size(), 1U);
        EXPECT_EQ(messages(), 2) << "it heard of nothing";
    }
    EXPECT_EQ(messages(), -1);
}

TEST_F(SmallModules, OneThatAllowsItGoes) {
    ASSERT_TRUE(modules_.load(kGood));
    modules_.registry().dynamicLinker()->unlockApplication(nullptr);
    modules_.registry().dynamicLinker()->registerAppMultiDocument(nullptr);
    EXPECT_FALSE(modules_.unload(kName)) << "no module was named";
    modules_.registry().dynamicLinker()->unlockApplication(asked<void*>("smallModulePackage", nullptr));
    EXPECT_EQ(modules_.unload("other").message.english, "other: is not loaded");
    ASSERT_TRUE(modules_.unload(kName));
    EXPECT_EQ(messages(), -1);
    EXPECT_TRUE(modules_.loadedNames().empty());
    ASSERT_TRUE(modules_.load(kGood));
    EXPECT_EQ(messages(), 2) << "afresh";
}

TEST_F(SmallModules, WhatIsNoModuleIsNotLoaded) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(modules_.load(FENMARK_OLD_MODULE).message.english,
              std::filesystem::path(FENMARK_OLD_MODULE).filename().string() +
                  ": is a module for another version of the host");
    EXPECT_EQ(modules_.load(FENMARK_NO_MODULE).message.english,
              std::filesystem::path(FENMARK_NO_MODULE).filename().string() +
                  ": is no module: it lacks the entry points");
    EXPECT_TRUE(modules_.load(folder.write("a.mdm", "no library")).message.english.starts_with("cannot be loaded: "));
    EXPECT_FALSE(modules_.load(folder.at("gone.mdm")));
    EXPECT_TRUE(modules_.loadedNames().empty());
}

} // namespace
} // namespace fenmark::host::embedded
