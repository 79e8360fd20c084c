#pragma once
// The Writing Style submenu: what it offers goes into the menu buffer record (segment 897), and
// what is chosen there comes in force.
//
//     0       4         8
//     +-------+---------+--------------------------------+
//     | count | checked | Pascal strings, back to back   |   384 bytes
//     +-------+---------+--------------------------------+
//      big-endian words

#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <utility>

#include "platform/LogSink.h"
#include "tools/checker/ToolRecord.h"
#include "tools/checker/WritingStyles.h"

namespace quorvane::checker {

inline constexpr std::size_t kMenuRecordSize = 384;

/// As many as there is room for; `checked` from 1, 0: none.
void writeMenuRecord(std::span<std::uint8_t> record, std::span<const std::string_view> titles,
                     std::uint32_t checked);

class WritingStyleMenu {
 public:
  using InForce = std::function<void(const WritingStyle&)>;

  /// `inForce` hears of the style that the settings name, and of each that is chosen.
  WritingStyleMenu(ToolRecord tool, std::span<std::uint8_t> record,
                   std::filesystem::path configDirectory, quorvane::LogSink& log, InForce inForce);

  /// Fills the record anew.
  void show() const;
  /// The one that field 46 says; a place without a style changes nothing.
  void choose();

 private:
  void use(std::size_t style);

  ToolRecord tool_;
  std::span<std::uint8_t> record_;
  std::filesystem::path configDirectory_;
  quorvane::LogSink& log_;
  InForce inForce_;
  std::uint32_t checked_ = 1;
};

}  // namespace quorvane::checker
