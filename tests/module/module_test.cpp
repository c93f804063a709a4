// The module in a host: entry points, messages, commands, map modules, unloading. The module is the built library.
#include "host/embedded/embedded_host.h"
#include "host/embedded/module_host.h"
#include "ui/dialog_user.h"

#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>

#include <dlfcn.h>

#include <gtest/gtest.h>

namespace fenmark::host::embedded {
namespace {

using ui::test::User;

const std::string kModule = FENMARK_MODULE_PATH;
const QString kImport = QStringLiteral("SIMAファイル読み込み");
const QString kResult = QStringLiteral("SIMA読み込み結果");
constexpr int kOk = 1;
constexpr int kClose = 2;

struct ModuleInHost : ::testing::Test {
    EmbeddedHost host;
    ModuleHost modules;
    std::vector<std::string> said;
    QTemporaryDir folder;
    User user;

    void SetUp() override {
        modules.onLine([this](const Worded& line) { said.push_back(line.english); });
    }
    void load() {
        const Outcome result = modules.load(kModule);
        ASSERT_TRUE(result) << result.message.english;
    }
    std::vector<std::string> siteNames() {
        std::vector<std::string> names;
        for (const auto& site : host.drawing().sites()) {
            names.push_back(site.name);
        }
        return names;
    }
    // The user closes the import dialog.
    User& closeDialog() { return user.press(kImport, kClose); }
    // The path that the import dialog shows, which the user then answers with a button.
    User& notePath(QStringList& shown, int button) {
        return user.then(kImport, [&shown, button](QWidget& dialog) {
            shown << dialog.findChild<QLineEdit*>(QStringLiteral("id210"))->text();
            User::click(dialog, button);
        });
    }
    // Gives the host a file of that content, as a drop on its window does.
    QString handFile(const QString& name, const QByteArray& content) {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        modules.setSystemText(mirdane::kPendingFileVariable, path.toStdString());
        return path;
    }
};

TEST_F(ModuleInHost, RegistersItsThreeModalCommandsInItsGroup) {
    load();
    ASSERT_EQ(modules.commands().size(), 3U);
    const char* names[] = {"Fenmark", "Fenmarks", "Fenmark2"};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(modules.commands()[i].group, "QMRFenmark");
        EXPECT_EQ(modules.commands()[i].globalName, names[i]);
        EXPECT_EQ(modules.commands()[i].localName, names[i]);
        EXPECT_EQ(modules.commands()[i].flags, 1U);
    }
    EXPECT_EQ(modules.uiReadied(), 1);
}

TEST_F(ModuleInHost, LoadsTheMapModuleBeforeTheMapDataModule) {
    load();
    EXPECT_EQ(modules.loadRequests(), (std::vector<std::string>{"mdmap.mdm", "MdMapAde.mdm"}));
}

TEST_F(ModuleInHost, IssuesNoLoadWithBothMapModulesLoaded) {
    modules.markLoaded("mdmap.mdm");
    modules.markLoaded("mdmapade.mdm");
    load();
    EXPECT_TRUE(modules.loadRequests().empty());
}

TEST_F(ModuleInHost, LoadsOnlyTheMapModuleWhenTheOtherIsThereAlready) {
    modules.markLoaded("mdmapade.mdm");
    load();
    EXPECT_EQ(modules.loadRequests(), std::vector<std::string>{"mdmap.mdm"});
}

TEST_F(ModuleInHost, ComparesTheNamesOfMapModulesInLowerCase) {
    modules.markLoaded("MDMAP.MDM");
    modules.markLoaded("MdMapAde.mdm");
    load();
    EXPECT_TRUE(modules.loadRequests().empty());
}

TEST_F(ModuleInHost, TheIdleCommandsNeitherFailNorPrintAnything) {
    load();
    EXPECT_TRUE(modules.run("Fenmarks"));
    EXPECT_TRUE(modules.run("fenmark2"));
    EXPECT_TRUE(said.empty());
    EXPECT_TRUE(host.messageBoxes().empty());
    EXPECT_TRUE(siteNames().empty());
}

TEST_F(ModuleInHost, TheDefaultSiteStandsInTheDrawingEvenIfTheDialogIsClosed) {
    load();
    closeDialog();
    EXPECT_TRUE(modules.run("Fenmark"));
    EXPECT_EQ(siteNames(), std::vector<std::string>{"サイト"});
    EXPECT_EQ(EmbeddedHost::liveAutomationReferences(), 0);
    EXPECT_EQ(EmbeddedHost::liveDatabaseObjects(), 0);
}

TEST_F(ModuleInHost, AFileThatWasHandedToTheHostStandsInTheDialogOnce) {
    load();
    const QString path = QStringLiteral(FENMARK_SOURCE_DIR "/examples/road.sim");
    modules.setSystemText(mirdane::kPendingFileVariable, path.toStdString());
    QStringList shown;
    notePath(shown, kClose);
    EXPECT_TRUE(modules.run("Fenmark"));
    notePath(shown, kClose);
    EXPECT_TRUE(modules.run("Fenmark"));
    // The run was not accepted, so that the next one begins as if it had not been.
    EXPECT_EQ(shown, (QStringList{path, QString()}));
    EXPECT_EQ(modules.systemText(mirdane::kPendingFileVariable), "");
    EXPECT_EQ(modules.systemText(mirdane::kLogFileVariable), "");
}

TEST_F(ModuleInHost, WidgetsLiveOnAfterTheModuleIsGone) {
    load();
    closeDialog();
    EXPECT_TRUE(modules.run("Fenmark"));
    EXPECT_TRUE(modules.unload("Fenmark.mdm"));
    // The toolkit asks every maker of accessible interfaces that it knows: none may be left in the unloaded library.
    QWidget widget;
    EXPECT_NE(QAccessible::queryAccessibleInterface(&widget), nullptr);
    QAccessible::setActive(true);
    QAccessible::setActive(false);
}

TEST_F(ModuleInHost, UnloadingRemovesTheCommandsAndTheModuleLoadsAgain) {
    load();
    EXPECT_FALSE(modules.load(kModule));
    EXPECT_TRUE(modules.unload("FENMARK.MDM"));
    EXPECT_TRUE(modules.commands().empty());
    EXPECT_FALSE(modules.unload("Fenmark.mdm"));
    EXPECT_FALSE(modules.run("Fenmark"));
    load();
    EXPECT_EQ(modules.commands().size(), 3U);
}

TEST_F(ModuleInHost, WhileACommandRunsNoOtherIsStartedAndTheModuleStays) {
    load();
    Outcome other;
    Outcome unloaded;
    user.then(kImport, [&](QWidget& dialog) {
        other = modules.run("Fenmark");
        unloaded = modules.unload("Fenmark.mdm");
        User::click(dialog, kClose);
    });
    EXPECT_TRUE(modules.run("Fenmark"));
    EXPECT_EQ(other.message.english, "Fenmark: another command is running");
    EXPECT_EQ(unloaded.message.english, "Fenmark.mdm: a command is running");
    EXPECT_TRUE(modules.unload("Fenmark.mdm"));
}

TEST_F(ModuleInHost, AnImportIsMadeAndTheNextRunOpensOnItsFile) {
    load();
    const QString path = handFile(QStringLiteral("a.sim"), "A00,\r\nA01,1,BP,0.000,0.000,,\r\nA99,\r\n");
    QStringList shown;
    notePath(shown, kOk).press(kResult, kOk);
    EXPECT_TRUE(modules.run("Fenmark"));
    EXPECT_EQ(host.drawing().entityCount(), 1U);
    EXPECT_TRUE(
        QString::fromStdString(modules.systemText(mirdane::kLogFileVariable)).endsWith(QStringLiteral("a_Input.log")));
    notePath(shown, kClose);
    EXPECT_TRUE(modules.run("Fenmark"));
    EXPECT_EQ(shown, (QStringList{path, path})) << "the values of the last run";
    EXPECT_EQ(EmbeddedHost::liveDatabaseObjects(), 0);
}

TEST_F(ModuleInHost, TheValuesOfTheLastRunGoWithTheModule) {
    load();
    const QString path = handFile(QStringLiteral("a.sim"), "A00,\r\nA01,1,BP,0.000,0.000,,\r\nA99,\r\n");
    QStringList shown;
    notePath(shown, kOk).press(kResult, kOk);
    EXPECT_TRUE(modules.run("Fenmark"));
    ASSERT_TRUE(modules.unload("Fenmark.mdm"));
    load();
    notePath(shown, kClose);
    EXPECT_TRUE(modules.run("Fenmark"));
    EXPECT_EQ(shown, (QStringList{path, QString()})) << "a new start begins with the start values";
}

TEST_F(ModuleInHost, AnImportThatBreaksOffIsToldInOneLineAndTheHostLivesOn) {
    load();
    handFile(QStringLiteral("bad.sim"), "H00\nH01,a,0,0,0,1,\nH99,\n");
    const Outcome result = modules.run("Fenmark");
    EXPECT_FALSE(result);
    ASSERT_EQ(said.size(), 1U);
    EXPECT_NE(said[0].find("bad.sim:2: "), std::string::npos) << said[0];
    closeDialog();
    EXPECT_TRUE(modules.run("Fenmark"));
}

TEST_F(ModuleInHost, ItsDataManagerHearsOfDocumentsThatEnd) {
    load();
    Document& second = host.newDocument();
    host.closeDocument(second);
    EXPECT_TRUE(modules.unload("Fenmark.mdm"));
    // No reactor is left behind that a further document could call.
    Document& third = host.newDocument();
    host.closeDocument(third);
    EXPECT_EQ(host.documents().size(), 1U);
}

TEST_F(ModuleInHost, EveryOtherMessageReturnsZero) {
    load();
    void* library = ::dlopen(kModule.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr);
    const auto entry = reinterpret_cast<int (*)(int, void*)>(::dlsym(library, "mdrxEntryPoint"));
    ASSERT_NE(entry, nullptr);
    for (int message : {-1, 0, 3, 4, 5, 6, 10, 15, 16, 1000}) {
        EXPECT_EQ(entry(message, nullptr), 0) << message;
    }
    EXPECT_EQ(reinterpret_cast<int (*)()>(::dlsym(library, "mdrxGetApiVersion"))(), mirdane::kModuleApiVersion);
    EXPECT_TRUE(modules.callableFunctions().empty());
    ::dlclose(library);
}

TEST_F(ModuleInHost, IsGoneFromTheProcessOnceItIsUnloaded) {
    load();
    closeDialog();
    EXPECT_TRUE(modules.run("Fenmark"));
    ASSERT_TRUE(modules.unload("Fenmark.mdm"));
    void* still = ::dlopen(kModule.c_str(), RTLD_NOLOAD | RTLD_LAZY);
    EXPECT_EQ(still, nullptr) << "a symbol that the loader shares keeps the library";
    if (still != nullptr) {
        ::dlclose(still);
    }
}

TEST_F(ModuleInHost, ASecondCopyLeavesTheCommandsOfTheFirstAlone) {
    load();
    const QString copy = folder.filePath(QStringLiteral("Copy.mdm"));
    ASSERT_TRUE(QFile::copy(QString::fromStdString(kModule), copy));
    const mirdane::CommandHandler first = modules.commands().front().handler;
    const Outcome second = modules.load(copy.toStdString());
    ASSERT_TRUE(second) << second.message.english;
    ASSERT_TRUE(modules.unload("Copy.mdm"));
    ASSERT_EQ(modules.commands().size(), 3U);
    EXPECT_EQ(modules.commands().front().handler, first);
    closeDialog();
    EXPECT_TRUE(modules.run("Fenmark"));
    EXPECT_EQ(siteNames(), std::vector<std::string>{"サイト"});
}

TEST_F(ModuleInHost, ALibraryThatIsNoModuleIsRefusedWithAReason) {
    EXPECT_FALSE(modules.load("/no/such/module.mdm"));
    EXPECT_FALSE(modules.load("libm.so.6"));
    EXPECT_TRUE(modules.loadedNames().empty());
}

TEST_F(ModuleInHost, AnUnknownCommandIsAnsweredInOneLine) {
    load();
    EXPECT_EQ(modules.run("Fenmark3").message.english, "Fenmark3: no such command");
}

} // namespace
} // namespace fenmark::host::embedded
