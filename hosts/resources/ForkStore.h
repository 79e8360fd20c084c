#pragma once
// Where the files `._name` of resource files lie: what a host gives ResourceFiles.

#include <memory>
#include <optional>
#include <string_view>

#include "hosts/resources/CheckedBytes.h"
#include "platform/FileManager.h"

namespace quorvane::resources {

class ForkStore {
 public:
  /// Held: no other process writes this file.
  using Lock = std::shared_ptr<void>;
  virtual ~ForkStore() = default;

  /// The whole `._name`, no bytes where there is none. None where the file itself is gone or this
  /// can't be read.
  virtual std::optional<Bytes> read(const FSRef& ref) = 0;
  /// Null where it can't be had within a few milliseconds.
  virtual Lock lock(const FSRef& ref) = 0;
  /// Under the lock. The new content is on the disk when it returns; false leaves the old one.
  virtual bool replace(const FSRef& ref, ByteView content) = 0;
  /// What stands there can't be read, or isn't written, for this reason.
  virtual void complain(const FSRef& ref, std::string_view reason) = 0;
};

}  // namespace quorvane::resources
