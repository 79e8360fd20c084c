#pragma once
// What every host's UserDefaults must do. Instantiate UserDefaultsConformance with a factory.

#include <gtest/gtest.h>

#include <memory>

#include "platform/Application.h"

namespace quorvane::conformance {

struct UserDefaultsStage {
  virtual ~UserDefaultsStage() = default;
  virtual UserDefaults& userDefaults() = 0;
};

using UserDefaultsFactory = std::unique_ptr<UserDefaultsStage> (*)();

class UserDefaultsConformance : public testing::TestWithParam<UserDefaultsFactory> {
 protected:
  std::unique_ptr<UserDefaultsStage> stage_ = GetParam()();
  UserDefaults& defaults_ = stage_->userDefaults();
};

TEST_P(UserDefaultsConformance, EachKeyKeepsItsLastValueAndAnUnsetOneIsFalse) {
  EXPECT_FALSE(defaults_.boolForKey("showTranslation"));
  defaults_.setBool(true, "verticalCandidate");
  defaults_.setBool(true, "ShiftKeyToggle");
  defaults_.setBool(false, "ShiftKeyToggle");
  EXPECT_TRUE(defaults_.boolForKey("verticalCandidate"));
  EXPECT_FALSE(defaults_.boolForKey("ShiftKeyToggle"));
  EXPECT_FALSE(defaults_.boolForKey("verticalcandidate"));
}

}  // namespace quorvane::conformance
