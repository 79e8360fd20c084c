// The parameter file: what of it counts for the application in front, and what is written back.

#include <gtest/gtest.h>

#include "hosts/memory/MemoryHost.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/menu/MenuShortcuts.h"
#include "src/menu/QBIMEndianCallBacks.h"
#include "src/menu/QBIM_IMK_Params.h"
#include "tools/parameters/UsualParameters.h"

namespace quorvane {
namespace {

using Bytes = std::vector<std::uint8_t>;

void add(Bytes& bytes, std::uint32_t number) { resources::appendNumber(bytes, number); }
void addSwitches(Bytes& bytes, FourCharCode signature, std::uint32_t word, std::string_view name) {
  add(bytes, signature);
  add(bytes, word);
  const std::size_t end = bytes.size() + 32;
  bytes.insert(bytes.end(), name.begin(), name.end());
  bytes.resize(end);
}

struct Params : testing::Test {
  Params() { Install_CoreEndianInstallFlippers(instance); }

  void putFile() {
    if (!host.files.has(path)) host.files.put(path, "");
    if (!table.empty()) fork.at("CGMI"_4cc, 8889).data = table;
    host.files.putResources(path, {"PREF"_4cc, "QVKT"_4cc}, fork);
  }
  Bytes inFile(FourCharCode type, std::int16_t id) {
    Bytes data;
    host.files.changeResources(path, [&](const auto&, const auto& now) {
      if (const auto* const found = now.find(type, id)) data = found->data;
    });
    return data;
  }
  void show(const ProcessSerialNumber& psn) {
    host.processes.setFront(psn, memory::Notice::Missed);
  }
  void bringToFront(FourCharCode signature, std::string bundle) {
    const auto psn =
        host.processes.add({{}, 0, "Letters", signature, "APPL"_4cc, 0, bundle, false});
    show(psn);
  }
  std::uint32_t load() {
    GetAndSetMenuParams3(instance);
    return word;
  }
  void save(std::uint32_t now) {
    word = now;
    SaveAppInteractivedata(instance);
  }

  memory::MemoryHost host;
  Instance instance{host.platform()};
  std::uint32_t& word = instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  resources::ResourceFork fork;
  Bytes table;  ///< of the switches, unless it is empty
  const std::string path = host.files.applicationSupportFolder + "/Quorvane/Parameters";
};
using ParamsSwitches = Params;

TEST_F(ParamsSwitches, AreFoundBySignatureOrByBundleIdentifier) {
  addSwitches(table, 0, 1, "com.example.freed");
  addSwitches(table, "\?\?\?\?"_4cc, 2, "com.example.letters");
  addSwitches(table, "LETT"_4cc, 3, "com.example.other");
  addSwitches(table, "SOME"_4cc, 4, "com.example.a.name.of.31.bytes.");
  addSwitches(table, "BARE"_4cc, 5, "");
  addSwitches(table, "\?\?\?\?"_4cc, 6, "");
  putFile();
  struct Case {
    FourCharCode signature;
    std::string bundle;
    std::uint32_t expected;
  };
  for (const Case& each : std::initializer_list<Case>{
           {"LETT"_4cc, "com.example.new", 3},
           {"LETT"_4cc, "com.example.letters", 2},  // the first record that is its
           {"\?\?\?\?"_4cc, "com.example.other", 3},
           {"\?\?\?\?"_4cc, "com.example.new", 0x1800},
           {"NEWS"_4cc, "com.example.a.name.of.31.bytes.and.more", 4},
           {"NEWS"_4cc, "com.example.freed", 0x1800},
           {"NEWS"_4cc, "", 0x1800},
           {"\?\?\?\?"_4cc, "", 6}}) {
    bringToFront(each.signature, each.bundle);
    EXPECT_EQ(load(), each.expected) << each.bundle;
  }
}

TEST_F(ParamsSwitches, AreReadOnceForAnApplicationAndStayWithoutAFile) {
  word = 0x11833;
  EXPECT_EQ(load(), 0x11833U) << "there is no file";
  addSwitches(table, "WRTR"_4cc, 5, "com.example.writer");
  putFile();
  EXPECT_EQ(load(), 0x11833U) << "the same application";
  bringToFront("LETT"_4cc, "");
  EXPECT_EQ(load(), 0x1800U);
  show(memory::MemoryProcesses::editor());
  EXPECT_EQ(load(), 5U);
  const std::uint64_t calls = host.journal.calls();
  load();
  EXPECT_EQ(host.journal.calls(), calls + 1) << "which one is in front, and no more";
}

TEST_F(ParamsSwitches, AreWrittenBackWhereTheyWereFoundOrIntoAFreeRecord) {
  addSwitches(table, "OTHR"_4cc, 7, "com.example.other");
  putFile();
  save(0x1873);
  addSwitches(table, "WRTR"_4cc, 0x1873, "com.example.writer");
  EXPECT_EQ(inFile("CGMI"_4cc, 8889), table) << "a new one behind the others";
  save(0);
  Bytes freed(table.begin(), table.begin() + 40);
  addSwitches(freed, 0, 0, "com.example.writer");
  EXPECT_EQ(inFile("CGMI"_4cc, 8889), freed);
  bringToFront("\?\?\?\?"_4cc, std::string(40, 'b'));
  EXPECT_EQ(load(), 0x1800U);
  save(3);
  save(0x10000);
  Bytes reused(table.begin(), table.begin() + 40);
  addSwitches(reused, "\?\?\?\?"_4cc, 0x10000, std::string(31, 'b'));
  EXPECT_EQ(inFile("CGMI"_4cc, 8889), reused);
  EXPECT_EQ(inFile("Pmen"_4cc, 8888), Bytes());
  show(memory::MemoryProcesses::editor());
  EXPECT_EQ(load(), 0x1800U) << "what was freed counts no more";
}

TEST_F(Params, FlagsAreReadByIndexAndWritten) {
  EXPECT_EQ(Get_GlobalAutoCompleteFlag(instance, 0), 0);
  EXPECT_EQ(Get_GlobalPencilMenuFlag(instance), 1) << "as it was";
  fork.at("AutC"_4cc, 8888).data = {0, 5};
  fork.at("Pmen"_4cc, 8888).data = {0};
  putFile();
  EXPECT_EQ(Get_GlobalAutoCompleteFlag(instance, 1), 5);
  EXPECT_EQ(Get_GlobalAutoCompleteFlag(instance, 2), 0);
  EXPECT_EQ(Get_GlobalPencilMenuFlag(instance), 0);
  Set_FlagMenuActivationFlag(instance, 9);
  EXPECT_EQ(inFile("Fmen"_4cc, 8888), Bytes{9});
  EXPECT_EQ(host.resources.CurResFile(), memory::MemoryResources::kApplicationFile);
}

/// What the input method has freed isn't filled again at the next start.
TEST(UsualParameters, AreAddedOnceAndATextFieldKeepsItsOwnName) {
  resources::ResourceFork file;
  const auto type = parameters::kTypeApplication.application();
  EXPECT_TRUE(parameters::addUsual(file));
  parameters::forgetSwitches(file, type);
  EXPECT_FALSE(parameters::addUsual(file));
  parameters::setSwitches(file, {"QVTY"_4cc, "com.example.method"}, 7);
  EXPECT_EQ(parameters::switchesIn(file).front().word, 7U) << "in the free record";
  EXPECT_TRUE(parameters::addUsual(file));
  EXPECT_FALSE(parameters::switchesOf(file, {parameters::kNoSignature, "com.example.method"}));
  EXPECT_EQ(parameters::switchesOf(file, type)->word, 7U);
}

TEST(ParameterFile, WhatNobodyReadsOfShortcutsStays) {
  resources::ResourceFork file;
  Bytes own{9, 0, 0, 1, 'L', 'E', 'T', 'T'};
  own.resize(24, 0xC);
  resources::append(own, Bytes{8, 0, 0, 1, 'C', 'k', 'S', 'p', 0, 0, 1, 0, 0, 7, 0xA, 0xB, 1, 2});
  file.at("QKYX"_4cc, 8888).data = own;
  parameters::setShortcut(file, "LETT"_4cc, {"CkSp"_4cc, 0x100, 5});
  parameters::setShortcut(file, "OTHR"_4cc, {"CkSe"_4cc, 0, 1});
  EXPECT_EQ(parameters::applicationShortcutsIn(file).back().shortcuts.size(), 1U);
  EXPECT_TRUE(parameters::forgetShortcuts(file, "OTHR"_4cc));
  own.at(37) = 5;  // the key
  EXPECT_EQ(file.find("QKYX"_4cc, 8888)->data, own);
}

TEST_F(Params, ShortcutsOfAnApplicationNeedThoseOfAll) {
  parameters::setShortcut(fork, {.command = "CkSp"_4cc, .modifiers = 0x100, .key = 1});
  parameters::setShortcut(fork, "OTHR"_4cc, {.command = "CkSp"_4cc, .key = 8});
  parameters::setShortcut(fork, "LETT"_4cc, {.command = "CkSp"_4cc, .key = 7});
  Bytes& own = fork.at("QKYX"_4cc, 8888).data;
  own[0] = 5;  // only the low 24 bits of a count are read
  putFile();
  const auto loadedFor = [&](FourCharCode signature) {
    bringToFront(signature, "");
    load();
    Shortcut shortcut;
    GetKeyShortcutForCommandID(instance, "CkSp"_4cc, shortcut);
    return shortcut.keyCode;
  };
  EXPECT_EQ(loadedFor("NEWS"_4cc), 1);
  EXPECT_EQ(loadedFor("LETT"_4cc), 7);
  own.resize(own.size() - 12);  // the last block claims one that isn't there
  putFile();
  show(memory::MemoryProcesses::editor());
  load();
  EXPECT_EQ(loadedFor("LETT"_4cc), -1);
  std::erase_if(fork.resources, [](const auto& each) { return each.type == "QKYS"_4cc; });
  putFile();
  EXPECT_EQ(loadedFor("OTHR"_4cc), -1);
}

}  // namespace
}  // namespace quorvane
