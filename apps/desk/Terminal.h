#pragma once
// The terminal while the desk has it: drawn on as a whole, keys read one by one, given back as it
// was at every end but a kill.

#include <memory>
#include <optional>

#include "apps/desk/Canvas.h"
#include "apps/desk/DeskKeys.h"
#include "hosts/desktop/Descriptor.h"

namespace quorvane::desk {

class Terminal {
 public:
  /// What is written to standard error meanwhile goes to `errorDescriptor`. Throws
  /// std::runtime_error where the terminal can't be had.
  explicit Terminal(int errorDescriptor);
  ~Terminal();
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  [[nodiscard]] int rows() const;
  [[nodiscard]] int columns() const;
  /// To be called when its size has changed.
  void resize();
  void show(const Canvas& canvas);
  /// True: `key` holds the next key, empty where that one means nothing to the desk. False: none
  /// waits.
  bool read(std::optional<DeskKey>& key);

 private:
  struct Screen;

  desktop::Descriptor errors_;  ///< what standard error was
  std::unique_ptr<Screen> screen_;
};

}  // namespace quorvane::desk
