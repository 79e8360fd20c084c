#pragma once
// What the side of the desk tells: what the input method knows, and what it did of late.

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "apps/RunningSystem.h"
#include "apps/desk/DeskModel.h"

namespace quorvane::desk {

/// Watches events and messages of a system for as long as both live.
class DeskFacts {
 public:
  explicit DeskFacts(RunningSystem& system);
  DeskFacts(const DeskFacts&) = delete;
  DeskFacts& operator=(const DeskFacts&) = delete;

  /// A call on the document, about to be carried out. Questions aren't told.
  void called(const field::ClientCall& call);
  /// As things are now, with the state of the main application's window.
  [[nodiscard]] std::vector<Fact> all(std::uint32_t windowState);

 private:
  using Lines = std::deque<std::u16string>;

  void watchMessages();
  [[nodiscard]] Fact sessionText();
  [[nodiscard]] Fact publishedRecord();
  [[nodiscard]] Fact mainApplication(std::uint32_t windowState);

  RunningSystem& system_;
  Lines event_;
  Lines calls_;
  Lines messages_;
};

}  // namespace quorvane::desk
