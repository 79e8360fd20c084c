#pragma once
// The Writing Style submenu: what the main application offers, asked for before each build.

#include <optional>

#include "src/base/Instance.h"
#include "src/bridge/ToolCalls.h"

namespace quorvane {

class QuorvaneWritingStyle {
 public:
  explicit QuorvaneWritingStyle(Instance& instance) : instance_(instance) {}
  QuorvaneWritingStyle(const QuorvaneWritingStyle&) = delete;
  QuorvaneWritingStyle& operator=(const QuorvaneWritingStyle&) = delete;

  /// Asks the main application and waits for it, unless its answer lies here already.
  void do_Init_WritingStyle_Menu();
  /// Builds the submenu, its items numbered from `base` + 1. Without an answer only the check mark
  /// follows the main application.
  void do_GetWritingStyleMenu(std::uint32_t base);

 private:
  void markSelected(std::uint32_t position);
  void build(const MenuBuffer& buffer, std::uint32_t base);

  Instance& instance_;
  std::uint32_t Menu_Sel = 0;  ///< checked position, from 1; 0: none yet
  std::uint32_t Menu_Count = 0;
  std::optional<MenuBuffer> DictMenuString;  ///< the answer, until it is used up
};

QuorvaneWritingStyle& Get_QuorvaneWritingStyleController(Instance& instance);
void Init_WritingStyle_Menu(Instance& instance);
void GetWritingStyleMenu(Instance& instance, std::uint32_t ignored);

}  // namespace quorvane
