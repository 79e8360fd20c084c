#pragma once
// JSON by simdjson, read through whatever holds the files.

#include "platform/FileManager.h"
#include "platform/JSONSerialization.h"

namespace quorvane {

/// A byte-order mark of UTF-8 before the text is passed over, since editors write one; text in
/// UTF-16 is malformed. A key that comes twice is told twice.
class SimdjsonSerialization final : public JSONSerialization {
 public:
  explicit SimdjsonSerialization(FileManager& files) : files_(files) {}

  std::optional<JSONError> JSONObjectWithStream(const std::string& path,
                                                JSONHandler& handler) override;

 private:
  FileManager& files_;
};

}  // namespace quorvane
