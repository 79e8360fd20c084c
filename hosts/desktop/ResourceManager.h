#pragma once
// Resource files of the disk, by the AppleDouble files beside them.

#include <filesystem>

#include "hosts/desktop/AppleDoubleFile.h"
#include "hosts/resources/ResourceFiles.h"
#include "platform/LogSink.h"

namespace quorvane::desktop {

/// A failure is logged.
class ForkFiles final : public resources::ForkStore {
 public:
  ForkFiles(quorvane::FileManager& files, quorvane::LogSink& log) : files_(files), log_(log) {}

  std::optional<resources::Bytes> read(const FSRef& ref) override;
  Lock lock(const FSRef& ref) override;
  bool replace(const FSRef& ref, resources::ByteView content) override;
  void complain(const FSRef& ref, std::string_view reason) override;

 private:
  /// Empty: the file has gone.
  std::string pathOf(const FSRef& ref);

  quorvane::FileManager& files_;
  quorvane::LogSink& log_;
};

class ResourceManager final : public resources::ResourceFiles {
 public:
  /// The map of this program's bundle is the file Quorvane.rsrc in its folder, a resource fork
  /// alone.
  ResourceManager(quorvane::FileManager& files, std::filesystem::path bundleFolder,
                  quorvane::LogSink& log);

  std::int32_t CFBundleOpenBundleResourceMap(std::string_view bundleIdentifier) override;
  void CFBundleCloseBundleResourceMap(std::string_view bundleIdentifier,
                                      std::int32_t refNum) override;

 private:
  ForkFiles forks_;
  std::filesystem::path bundleFolder_;
  quorvane::LogSink& log_;
};

}  // namespace quorvane::desktop
