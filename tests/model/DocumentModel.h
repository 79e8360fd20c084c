#pragma once
// What a document must hold, worked out naively: from the keys that were passed on to it and from
// the fixes that were sent. Knows nothing of the input method.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/AppKitEvents.h"

namespace quorvane::model {

struct DocumentModel {
  std::u16string text;
  std::size_t from = 0;  ///< the selection: from here
  std::size_t to = 0;    ///< to here
  bool closed = false;

  /// A key down that was passed on. `clipboard` belongs to all documents.
  void key(const NSEvent& event, std::u16string& clipboard) {
    if (closed || event.type != NSEventType::KeyDown || event.characters.empty()) return;
    const char16_t first = event.characters[0];
    const std::uint32_t flags = event.modifierFlags & ~NSEventModifierFlagCapsLock;
    if (flags & (NSEventModifierFlagCommand | NSEventModifierFlagControl)) {
      if (flags == NSEventModifierFlagCommand && event.characters.size() == 1) {
        command(first >= u'A' && first <= u'Z' ? static_cast<char16_t>(first + 32) : first,
                clipboard);
      }
    } else if (first < 32 || (first >= 127 && first < 160)) {
      control(first);
    } else if (first < 0xF700 || first > 0xF8FF) {
      put(from, to, event.characters);
    }
  }

  void click(std::size_t index) { caret(std::min(index, text.size())); }

  /// A fix that found its client: it takes the place of the `count` units before the selection.
  /// Where there aren't so many the count is refused, and the text lands where the caret is; no
  /// text leaves a selection as it is. False: refused.
  bool fix(std::uint32_t count, const std::u16string& replacement) {
    if (closed) return false;
    const bool fits = count <= from;
    if (fits && count > 0) {
      put(from - count, from, replacement);
    } else if (!replacement.empty()) {
      put(from, to, replacement);
    }
    return fits;
  }

  /// A fix that waited for its client: refused as a whole where there aren't so many.
  bool parkedFix(std::uint32_t count, const std::u16string& replacement) {
    if (closed || count > from) return false;
    if (count > 0 || !replacement.empty()) put(from - count, count == 0 ? to : from, replacement);
    return true;
  }

 private:
  void caret(std::size_t position) { from = to = position; }

  void put(std::size_t first, std::size_t last, const std::u16string& replacement) {
    text = text.substr(0, first) + replacement + text.substr(last);
    caret(first + replacement.size());
  }

  void command(char16_t letter, std::u16string& clipboard) {
    if (letter == u'a') {
      from = 0;
      to = text.size();
    }
    if ((letter == u'c' || letter == u'x') && from < to) clipboard = text.substr(from, to - from);
    if (letter == u'x') put(from, to, u"");
    if (letter == u'v') put(from, to, clipboard);
  }

  void control(char16_t code) {
    const bool selected = from < to;
    if (code == 13 || code == 3) return put(from, to, u"\n");
    if (code == 9) return put(from, to, u"\t");
    if (code == 8) return put(selected ? from : left(from), to, u"");
    if (code == 127) return put(from, selected ? to : right(to), u"");
    if (code == 28) return caret(selected ? from : left(from));
    if (code == 29) return caret(selected ? to : right(to));
    if (code == 30) return caret(otherLine(from, -1));
    if (code == 31) return caret(otherLine(to, +1));
    if (code == 1) return caret(0);
    if (code == 4) return caret(text.size());
  }

  std::size_t left(std::size_t position) const {
    if (position == 0) return 0;
    const bool pair = position > 1 && isLow(text[position - 1]) && isHigh(text[position - 2]);
    return position - (pair ? 2 : 1);
  }

  std::size_t right(std::size_t position) const {
    if (position == text.size()) return position;
    const bool pair =
        position + 1 < text.size() && isHigh(text[position]) && isLow(text[position + 1]);
    return position + (pair ? 2 : 1);
  }

  std::size_t otherLine(std::size_t position, int step) const {
    std::vector<std::size_t> starts{0};
    std::size_t line = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] != u'\n') continue;
      starts.push_back(i + 1);
      if (i < position) line = starts.size() - 1;
    }
    if (step < 0 ? line == 0 : line + 1 == starts.size()) return position;
    const std::size_t target = step < 0 ? line - 1 : line + 1;
    const std::size_t end = target + 1 < starts.size() ? starts[target + 1] - 1 : text.size();
    const std::size_t wanted = std::min(starts[target] + position - starts[line], end);
    const bool insidePair =
        wanted > 0 && wanted < text.size() && isLow(text[wanted]) && isHigh(text[wanted - 1]);
    return insidePair ? wanted - 1 : wanted;
  }

  static bool isLow(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }
  static bool isHigh(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
};

}  // namespace quorvane::model
