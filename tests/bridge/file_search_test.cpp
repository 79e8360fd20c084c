// Searches for files and folders, and the list that they leave.

#include "src/bridge/NSFileManager_search.h"
#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

class FileSearch : public BridgeTest {
 protected:
  using Names = std::vector<std::string>;

  void put(const std::string& name, FourCharCode type, FourCharCode creator) {
    host.files.put(folder_ + "/" + name, "");
    host.files.putResources(folder_ + "/" + name, {type, creator}, {});
  }
  FSRef support() {
    FSRef ref;
    host.files.FSFindFolder(kUserDomain, kApplicationSupportFolderType, ref);
    return ref;
  }
  Names search(std::uint32_t kind, bool recurse = false) {
    do_Search_ItemForFSRef(instance, kind, support(), recurse);
    return names();
  }
  /// "none" where there is no list.
  Names names() {
    const Handle list = Get_iterate_Handle(instance);
    if (list == nullptr) return {"none"};
    Names result;
    for (std::size_t i = 0; i < GetHandleSize(list) / kFSRefSize; ++i) {
      FileName name{};
      FSGetFileDirName_ToCString(instance, itemOfList(list, i), name);
      result.emplace_back(reinterpret_cast<const char*>(name.data()));
    }
    return result;
  }

  const std::string folder_ = host.files.applicationSupportFolder;
};

TEST_F(FileSearch, EachKindFindsItsFoldersOrFiles) {
  for (const auto* name : {"Quorvane", "quorvane", "Quorvane Dictionaries", "Spelling", "AutoType",
                           "Quorvane.app", "Applications", "Quorvane_ARC7_X"}) {
    host.files.makeFolder(folder_ + "/" + name);
  }
  put("one", "QDXC"_4cc, "QVKT"_4cc);
  put("two", "QPD2"_4cc, "QVKT"_4cc);
  put("three", "QPD2"_4cc, "QVKE"_4cc);
  put("four", "PREF"_4cc, "QVKT"_4cc);
  put("five", "TEXT"_4cc, "\?\?\?\?"_4cc);
  put("six", "TEXT"_4cc, 0);
  put("seven", "TEXT"_4cc, "QVKT"_4cc);
  put("Quorvane ARC7 Preferences", 0, 0);
  for (const auto& [kind, found] : std::vector<std::pair<std::uint32_t, Names>>{
           {1, {"one", "two"}},
           {3, {"Quorvane"}},
           {4, {"none"}},
           {5, {"Quorvane Dictionaries"}},
           {6, {"Spelling"}},
           {7, {"AutoType"}},
           {8, {"Quorvane.app"}},
           {9, {"Quorvane_ARC7_X"}},
           {10, {"Applications"}},
           {18, {"four"}},
           {20, {"five", "six"}},
           {25, {"none"}},  // what bears the name is a folder
           {26, {"Quorvane ARC7 Preferences"}}}) {
    EXPECT_EQ(search(kind), found) << kind;
  }
}

TEST_F(FileSearch, AFolderThatMatchesEndsItsBatch) {
  host.files.makeFolder(folder_ + "/Quorvane ARC7 X");
  for (int i = 0; i < 300; ++i) put("Quorvane B" + std::to_string(i), 0, 0);
  host.files.makeFolder(folder_ + "/Quorvane-ARC7-X");
  EXPECT_EQ(search(9).size(), 2U) << "one in each of two batches";
  for (int i = 0; i < 300; ++i) host.files.remove(folder_ + "/Quorvane B" + std::to_string(i));
  EXPECT_EQ(search(9), Names{"Quorvane ARC7 X"});
}

TEST_F(FileSearch, OnlyDictionariesStayInTheirFolderWhateverIsAsked) {
  host.files.makeFolder(folder_ + "/a/Spelling");
  put("a/one", "QDXC"_4cc, "QVKT"_4cc);
  put("a/two", "PREF"_4cc, "QVKT"_4cc);
  EXPECT_EQ(search(6), Names{"none"});
  EXPECT_EQ(search(6, true), Names{"Spelling"});
  EXPECT_EQ(search(18, true), Names{"two"});
  EXPECT_EQ(search(1, true), Names{"none"});
}

TEST_F(FileSearch, TheListGrowsBeyondItsFirstRoomAndIsSortedByBytes) {
  Names expected;
  for (int i = 0; i < 600; ++i) {
    expected.push_back("Ba_"[i % 3] + std::to_string(i * 7919 % 600));
    put(expected.back(), "PREF"_4cc, "QVKT"_4cc);
  }
  std::ranges::sort(expected);
  EXPECT_EQ(search(18), expected);
  FSRef ref;
  EXPECT_EQ(Finish_Return_Search(instance, ref), 1);
  EXPECT_EQ(ref, itemOfList(Get_iterate_Handle(instance), 0));
}

}  // namespace
}  // namespace quorvane::test
