#pragma once
// Opening a resource file for a while.

#include "src/base/Instance.h"

namespace quorvane {

/// Opens the file's resource fork, which becomes current. Its reference number; -1 where it can't
/// be opened.
std::int32_t Do_FS_OpenResFile(Instance& instance, const FSRef& ref, std::int8_t permission);

/// The file that `open` opens, current for as long as this lives. Then it is closed, and what was
/// current before is so again.
class CurrentResFile {
 public:
  template <class Open>
  CurrentResFile(Instance& instance, const Open& open)
      : resources_(instance.platform().resourceManager),
        saved_(resources_.CurResFile()),
        refNum_(open(instance)) {}
  ~CurrentResFile() {
    if (*this) resources_.CloseResFile(refNum_);
    resources_.UseResFile(saved_);
  }
  CurrentResFile(const CurrentResFile&) = delete;
  CurrentResFile& operator=(const CurrentResFile&) = delete;

  /// False: it isn't open.
  explicit operator bool() const { return refNum_ != -1; }

 private:
  ResourceManager& resources_;
  std::int32_t saved_;
  std::int32_t refNum_;
};

}  // namespace quorvane
