#pragma once
// What every host's resource files must do.

#include "tests/conformance/CatalogConformance.h"

namespace quorvane::conformance {

class ResourcesConformance : public CatalogConformance {
 protected:
  using Bytes = std::vector<std::uint8_t>;

  ResourcesConformance() {
    fork_.reserved[7] = 1;
    fork_.resources = {{"Pmen"_4cc, 8888, 32, 5, "pen", {1}}, {"Pmen"_4cc, 1, 0, 0, {}, {2, 3}}};
    stage_->makeFolder(path_.substr(0, path_.rfind('/')));
    stage_->putFile(path_, {"PREF"_4cc, "QVKT"_4cc}, fork_);
  }
  FSRef ref() { return refOf(refOf(supportRef(), u"Quorvane"), u"Parameters"); }
  std::int32_t open(std::int8_t permission = fsRdWrShPerm) {
    std::int32_t refNum = -1;
    EXPECT_EQ(resources_.FSOpenResourceFile(ref(), permission, refNum), noErr);
    EXPECT_EQ(resources_.CurResFile(), refNum);
    return refNum;
  }
  resources::ResourceFork forkNow() {
    const auto file = stage_->resourcesOf(path_);
    EXPECT_EQ(file.finderInfo(), (resources::FinderInfo{"PREF"_4cc, "QVKT"_4cc}));
    return resources::readResourceFork(file.content(resources::kResourceForkEntry)).value.value();
  }

  ResourceManager& resources_ = platform_.resourceManager;
  const std::string path_ = stage_->supportFolder() + "/Quorvane/Parameters";
  resources::ResourceFork fork_;
};

TEST_P(ResourcesConformance, WhatIsWrittenIsThereAndAllElseStays) {
  const std::int32_t before = resources_.CurResFile();
  const std::int32_t refNum = open();
  const Handle first = resources_.Get1Resource("Pmen"_4cc, 8888);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(resources_.Get1Resource("Pmen"_4cc, 8888), first);
  EXPECT_EQ(resources_.Get1Resource("Pmen"_4cc, 2), nullptr);
  EXPECT_EQ(resources_.ResError(), resNotFound);
  first->content = {9, 9, 9};
  resources_.WriteResource(first);
  EXPECT_EQ(forkNow(), fork_) << "it hasn't been called changed";
  resources_.ChangedResource(first);
  resources_.WriteResource(first);
  ASSERT_EQ(resources_.ResError(), noErr);
  fork_.resources[0].data = {9, 9, 9};
  EXPECT_EQ(forkNow(), fork_);

  const Handle added = NewHandle(2);
  resources_.AddResource(added, "Fmen"_4cc, 1, "new");
  resources_.AddResource(added, "Fmen"_4cc, 2, "");
  EXPECT_EQ(resources_.ResError(), addResFailed) << "it is one already";
  resources_.WriteResource(added);
  resources_.DetachResource(added);
  EXPECT_NE(resources_.Get1Resource("Fmen"_4cc, 1), added);
  fork_.resources.push_back({"Fmen"_4cc, 1, 0, 0, "new", {0, 0}});
  EXPECT_EQ(forkNow(), fork_);

  first->content = {4};
  resources_.ChangedResource(first);
  resources_.CloseResFile(refNum);
  fork_.resources[0].data = {4};
  EXPECT_EQ(forkNow(), fork_) << "closing writes";
  EXPECT_FALSE(first->hasContent);
  EXPECT_EQ(added->content, Bytes(2)) << "detached";
  EXPECT_EQ(resources_.CurResFile(), before);
  resources_.UseResFile(refNum);
  EXPECT_EQ(resources_.ResError(), resFNotFound);
  EXPECT_EQ(resources_.CurResFile(), before);
}

TEST_P(ResourcesConformance, WhatSomebodyElseHasChangedOrProtectedIsNotWrittenOver) {
  const auto statusAfter = [this](const auto& change) {
    const std::int32_t refNum = open();
    const Handle handle = resources_.Get1Resource("Pmen"_4cc, 8888);
    change();
    stage_->putFile(path_, {"PREF"_4cc, "QVKT"_4cc}, fork_);
    handle->content = {9};
    resources_.ChangedResource(handle);
    resources_.WriteResource(handle);
    const OSStatus status = resources_.ResError();
    resources_.CloseResFile(refNum);
    return status;
  };
  resources::Resource& pen = fork_.resources[0];
  EXPECT_EQ(statusAfter([&] { pen.data = {2}; }), wrPermErr);
  EXPECT_EQ(forkNow(), fork_);
  EXPECT_EQ(statusAfter([&] { pen.attributes = resources::resProtected; }), wrPermErr);
  pen.attributes = 0;
  EXPECT_EQ(statusAfter([&] { fork_.attributes = resources::mapReadOnly; }), wrPermErr);
  EXPECT_EQ(statusAfter([&] { fork_.attributes = 0; }), noErr);
}

TEST_P(ResourcesConformance, AFileOpenedForReadingOrDamagedIsNotWritten) {
  const std::int32_t refNum = open(fsRdPerm);
  const Handle handle = resources_.Get1Resource("Pmen"_4cc, 8888);
  resources_.ChangedResource(handle);
  resources_.WriteResource(handle);
  EXPECT_NE(resources_.ResError(), noErr);
  resources_.AddResource(NewHandle(1), "Fmen"_4cc, 1, "");
  EXPECT_EQ(resources_.ResError(), addResFailed);
  resources_.CloseResFile(refNum);
  EXPECT_EQ(forkNow(), fork_);

  std::int32_t other = 77;
  stage_->putFile(path_, {"PREF"_4cc, "QVKT"_4cc}, {});
  EXPECT_EQ(resources_.FSOpenResourceFile(ref(), fsCurPerm, other), noErr);
  resources_.CloseResFile(other);
  other = 77;
  EXPECT_NE(resources_.FSOpenResourceFile({}, fsCurPerm, other), noErr);
  EXPECT_EQ(resources_.FSOpenResFile({}, fsCurPerm), -1);
  EXPECT_EQ(other, 77);
}

}  // namespace quorvane::conformance
