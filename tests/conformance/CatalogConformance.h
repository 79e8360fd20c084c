#pragma once
// What every host's folders, references and catalogue must do.

#include <map>

#include "hosts/resources/AliasRecord.h"
#include "tests/conformance/HostStage.h"

namespace quorvane::conformance {

class CatalogConformance : public HostConformance {
 protected:
  struct Listing {
    OSStatus status = noErr;
    std::map<std::u16string, FSCatalogItem> items;
    std::size_t batches = 0;
  };
  /// By batches of `size`.
  Listing list(const FSRef& folder, std::size_t size) {
    Listing listing;
    FSIterator iterator = 0;
    if (files_.FSOpenIterator(folder, iterator) != noErr) return {fnfErr, {}, 0};
    while (listing.status == noErr) {
      std::vector<FSCatalogItem> items(size);
      std::size_t count = 0;
      listing.status = files_.FSGetCatalogInfoBulk(
          iterator, kFSCatInfoNodeFlags | kFSCatInfoFinderInfo, items, count);
      for (std::size_t i = 0; i < count; ++i) listing.items[items[i].name] = items[i];
      ++listing.batches;
    }
    EXPECT_EQ(files_.FSCloseIterator(iterator), noErr);
    EXPECT_NE(files_.FSCloseIterator(iterator), noErr);
    return listing;
  }
  FSRef supportRef() {
    FSRef ref;
    EXPECT_EQ(files_.FSFindFolder(kUserDomain, kApplicationSupportFolderType, ref), noErr);
    return ref;
  }
  FSRef refOf(const FSRef& folder, const std::u16string& name) {
    return list(folder, 16).items.at(name).ref;
  }
  UTCDateTime dateOf(const FSRef& ref) {
    FSCatalogInfo info;
    EXPECT_EQ(files_.FSGetCatalogInfo(ref, kFSCatInfoContentMod, &info, nullptr, nullptr), noErr);
    return info.contentModDate;
  }

  FileManager& files_ = platform_.fileManager;
  const std::string folder_ = stage_->supportFolder() + "/Quorvane";
};

TEST_P(CatalogConformance, AFolderGivesItsItemsWithTheirKindTypeAndCreator) {
  stage_->makeFolder(folder_ + "/Inside/Deeper");
  for (int i = 0; i < 7; ++i) {
    stage_->putFile(folder_ + "/f\xC3\xA9" + std::to_string(i), {"PREF"_4cc, "QVKT"_4cc}, {});
  }
  stage_->putFile(folder_ + "/plain", {}, {});
  const FSRef folder = refOf(supportRef(), u"Quorvane");
  for (const std::size_t size : {1U, 3U, 256U}) {
    const Listing listing = list(folder, size);
    EXPECT_EQ(listing.status, errFSNoMoreItems);
    EXPECT_GE(listing.batches, 9 / size);
    ASSERT_EQ(listing.items.size(), 9U) << "the files of their resources are no items";
    EXPECT_EQ(listing.items.at(u"Inside").info.nodeFlags & kFSNodeIsDirectoryMask, 16);
    EXPECT_EQ(listing.items.at(u"f\u00E96").info.fileType, "PREF"_4cc);
    EXPECT_EQ(listing.items.at(u"f\u00E96").info.fileCreator, "QVKT"_4cc);
    EXPECT_EQ(listing.items.at(u"plain").info.nodeFlags, 0);
    EXPECT_EQ(listing.items.at(u"plain").info.fileType, 0U);
  }
  EXPECT_EQ(list(refOf(folder, u"plain"), 1).status, fnfErr) << "a file is no folder";
  EXPECT_NE(files_.FSFindFolder(kUserDomain, "none"_4cc, *std::make_unique<FSRef>()), noErr);
}

TEST_P(CatalogConformance, AnAliasLeadsToWhatIsThere) {
  stage_->makeFolder(folder_);
  const FSRef base = supportRef();
  FSRef found;
  const auto resolve = [&](const FSRef* from, std::string_view path) {
    return files_.FSResolveAlias(from, resources::aliasRecord(path), found);
  };
  EXPECT_EQ(resolve(nullptr, folder_), noErr);
  EXPECT_EQ(found, refOf(base, u"Quorvane"));
  EXPECT_EQ(resolve(&base, "Quorvane"), noErr);
  EXPECT_EQ(found, refOf(base, u"Quorvane"));
  EXPECT_EQ(resolve(nullptr, "Quorvane"), fnfErr);
  EXPECT_EQ(resolve(&base, "none"), fnfErr);
}

TEST_P(CatalogConformance, AReferenceIsGoodForAsLongAsTheItemLives) {
  stage_->makeFolder(folder_);
  stage_->putFile(folder_ + "/one", {1, 2}, {});
  const FSRef support = supportRef();
  const FSRef folder = refOf(support, u"Quorvane");
  const FSRef one = refOf(folder, u"one");
  EXPECT_EQ(refOf(folder, u"one"), one) << "the same item has the same reference";
  EXPECT_FALSE(files_.FSIsFSRefValid({}));
  stage_->rename(folder_ + "/one", folder_ + "/two");
  stage_->rename(folder_, stage_->supportFolder() + "/Renamed");
  std::u16string name;
  FSRef parent;
  ASSERT_EQ(files_.FSGetCatalogInfo(one, 0, nullptr, &name, &parent), noErr);
  EXPECT_EQ(name, u"two");
  EXPECT_EQ(parent, folder);
  std::string path;
  ASSERT_EQ(files_.FSRefMakePath(one, path), noErr);
  EXPECT_EQ(path, stage_->supportFolder() + "/Renamed/two");
  stage_->remove(path);
  stage_->putFile(path, {1, 2}, {});
  EXPECT_FALSE(files_.FSIsFSRefValid(one)) << "another file of that name";
  EXPECT_NE(files_.FSGetCatalogInfo(one, 0, nullptr, nullptr, nullptr), noErr);
  EXPECT_TRUE(files_.FSIsFSRefValid(folder));
}

TEST_P(CatalogConformance, DatesAreSetAndGotAndAFolderShowsItsChanges) {
  stage_->makeFolder(folder_);
  const FSRef folder = refOf(supportRef(), u"Quorvane");
  const FSCatalogInfo info{.contentModDate = {.lowSeconds = 0xE1234567, .fraction = 0x8001}};
  ASSERT_EQ(files_.FSSetCatalogInfo(folder, kFSCatInfoNodeFlags | kFSCatInfoContentMod, info),
            noErr);
  EXPECT_EQ(dateOf(folder), info.contentModDate);
  EXPECT_EQ(files_.FSSetCatalogInfo(folder, kFSCatInfoNodeFlags, {}), noErr);
  EXPECT_EQ(dateOf(folder), info.contentModDate);
  stage_->putFile(folder_ + "/new", {}, {});
  EXPECT_NE(dateOf(folder), info.contentModDate);
  EXPECT_NE(files_.FSSetCatalogInfo({}, kFSCatInfoContentMod, info), noErr);
}

}  // namespace quorvane::conformance
