#pragma once
// A host under the suites that every host must pass. Instantiate each with a factory.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "hosts/resources/AppleDouble.h"
#include "hosts/resources/ResourceFork.h"
#include "platform/Platform.h"

namespace quorvane::conformance {

struct HostStage {
  virtual ~HostStage() = default;
  virtual Platform platform() = 0;
  /// Handles all that waits, notifications included.
  virtual void turn() = 0;
  /// Where files may be written; need not exist.
  virtual std::string folder() = 0;
  /// The application support folder, which exists.
  virtual std::string supportFolder() = 0;
  // As another program would do it.
  virtual void putFile(const std::string& path, resources::FinderInfo info,
                       const resources::ResourceFork& fork) = 0;
  /// What the file's `._name` holds.
  virtual resources::AppleDouble resourcesOf(const std::string& path) = 0;
  virtual void makeFolder(const std::string& path) = 0;
  virtual void rename(const std::string& from, const std::string& to) = 0;
  virtual void remove(const std::string& path) = 0;
  /// Somebody else serves `name`; without a callback he never answers.
  virtual void serveElsewhere(std::string_view name, CFMessagePortCallBack callback) = 0;
  /// Both sides have noticed when it returns.
  virtual void stopElsewhere(std::string_view name) = 0;
  virtual std::int32_t launch(std::string name, FourCharCode signature, std::string bundle) = 0;
  virtual void quit(std::int32_t pid) = 0;
  virtual void bringToFront(std::int32_t pid) = 0;
};

struct HostConformance : testing::TestWithParam<std::unique_ptr<HostStage> (*)()> {
  std::unique_ptr<HostStage> stage_ = GetParam()();
  const Platform platform_ = stage_->platform();
};

}  // namespace quorvane::conformance
