#pragma once
// What a document must hold, worked out naively: from the keys that were passed on to it and from
// the fixes that were sent. Knows nothing of the input method.

#include <cstdint>
#include <string>

#include "platform/AppKitEvents.h"

namespace quorvane::model {

struct DocumentModel {
  std::u16string text;
  std::size_t from = 0;  ///< the selection: from here
  std::size_t to = 0;    ///< to here
  bool closed = false;

  /// A key down that was passed on. `clipboard` belongs to all documents.
  void key(const NSEvent& event, std::u16string& clipboard);
  void click(std::size_t index);
  /// A fix that found its client: it takes the place of the `count` units before the selection.
  /// Where there aren't so many the count is refused, and the text lands where the caret is.
  /// False: refused.
  bool fix(std::uint32_t count, const std::u16string& replacement);
  /// A fix that waited for its client: refused as a whole where there aren't so many.
  bool parkedFix(std::uint32_t count, const std::u16string& replacement);

 private:
  void put(std::size_t first, std::size_t last, const std::u16string& replacement);
  void caret(std::size_t position) { from = to = position; }
  void command(char16_t letter, std::u16string& clipboard);
  void control(char16_t code);
  [[nodiscard]] std::size_t left(std::size_t position) const;
  [[nodiscard]] std::size_t right(std::size_t position) const;
  [[nodiscard]] std::size_t otherLine(std::size_t position, int step) const;
};

}  // namespace quorvane::model
