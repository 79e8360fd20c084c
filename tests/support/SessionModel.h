#pragma once
// What the input method must remember of one client's typing, worked out naively: the bytes of the
// sentence that is being typed, and the place of the cursor in them; and what smart characters make
// of a key behind it.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/AppKitEvents.h"

namespace quorvane::model {

/// The text record: a session as it was published, or what the main application wrote over it.
struct RecordModel {
  std::uint32_t cursor = 0;
  std::uint32_t length = 0;
  std::string bytes = std::string(384, '\0');

  [[nodiscard]] bool possible() const { return cursor <= length && length <= 384; }
  /// What lies before the cursor.
  [[nodiscard]] std::string text() const { return bytes.substr(0, cursor); }
};

/// A byte that takes the place of a key and of `count` characters before the caret; a letter is
/// pressed, anything else inserted.
struct Replacement {
  std::uint8_t byte = 0;
  std::uint32_t count = 0;
};

struct SessionModel {
  /// A byte each, plus kTyped where it is the first of a character beyond ASCII that was typed.
  /// What lies behind the text counts too.
  std::u16string cells = std::u16string(385, u'\0');
  std::uint32_t cursor = 0;
  std::uint32_t length = 0;
  std::uint32_t editState = 0;      ///< 1: moved left, 2: dropped, 3: cancelled
  std::uint32_t sentenceFlags = 1;  ///< bit 0: the next letter begins a sentence
  bool tagged = false;              ///< its document has the property that a fix asks for
  bool known = false;               ///< its client has been met
  std::uint32_t place = 0;          ///< what is behind it stands in the document, too
  bool published = false;           ///< as it is now

  [[nodiscard]] std::string text() const { return bytes(length); }
  [[nodiscard]] std::string head() const { return bytes(cursor); }

  /// As its first bytes stand in the document; those that no character is known of are out of plain
  /// range.
  [[nodiscard]] std::u16string shown(std::size_t count) const {
    std::u16string text;
    for (const char16_t cell : cells.substr(0, count)) {
      if (cell == 209 && text.ends_with(u'-')) text.pop_back();
      if (cell >= 208 && cell <= 213) {
        text += u"–—“”‘’"[cell - 208];
      } else {
        text += cell == 13 ? u'\n' : cell < 128 ? cell : char16_t(0xF000 | (cell & 0xFF));
      }
    }
    return text;
  }
  [[nodiscard]] std::u16string shown() const { return shown(cursor); }
  static bool plain(const std::u16string& text) {
    constexpr std::u16string_view kSmart = u"–—“”‘’";
    return std::ranges::all_of(
        text, [&](char16_t unit) { return unit < 128 || kSmart.find(unit) != kSmart.npos; });
  }

  /// As much as there is room for. What it has in common with the old text, at either end, is still
  /// what was typed.
  void take(const RecordModel& record) {
    const std::uint32_t taken = std::min(record.cursor, 384U);
    std::u16string fresh;
    for (std::uint32_t i = 0; i < taken; ++i) fresh += static_cast<std::uint8_t>(record.bytes[i]);
    const auto same = [&](std::uint32_t to, std::uint32_t from) {
      const bool equal = (fresh[to] & 0xFF) == (cells[from] & 0xFF);
      if (equal) fresh[to] = cells[from];
      return equal;
    };
    std::uint32_t head = 0;
    while (head < std::min(taken, cursor) && same(head, head)) ++head;
    for (std::uint32_t tail = 1; tail <= std::min(taken - head, cursor); ++tail) {
      if (!same(taken - tail, cursor - tail)) break;
    }
    cells.replace(0, taken, fresh);
    cursor = taken;
    length = std::clamp(record.length, taken, 384U);
  }

  void publish(RecordModel& record) const {
    record.cursor = cursor;
    record.length = length;
    record.bytes.replace(0, cursor + 1, bytes(cursor + 1));
    record.bytes.resize(384);
  }

  [[nodiscard]] std::uint8_t byteBefore() const {
    return cursor > 0 ? static_cast<std::uint8_t>(cells[cursor - 1]) : std::uint8_t{0};
  }

  /// Keys behind which nobody knows where the caret is, or what stands there.
  static bool leaves(std::uint8_t key, std::uint32_t modifiers) {
    constexpr std::uint32_t kCommand = 0x100, kFurther = 0x2D900;
    const auto isOneOf = [&](std::string_view keys) {
      return keys.find(static_cast<char>(key)) != std::string_view::npos;
    };
    return isOneOf("\x01\x04\x0B\x0C\x1E\x1F") ||
           ((modifiers & kFurther) != 0 && isOneOf("\x1C\x1D\x7F")) ||
           ((modifiers & kCommand) != 0 && isOneOf("xvzXVZ"));
  }

  void cancel() {
    if (cursor > 0) editState = 3;
    forget();
    sentenceFlags = 0;
  }

  /// Empty: the key is typed as it is. Of `mask`, 1 is for quotes, 2 for dashes, 4 for capitals.
  std::optional<Replacement> replacement(std::uint8_t key, std::uint32_t mask) {
    if (key == '-' && (mask & 2) != 0) return dash();
    if ((key == '"' || key == '\'') && (mask & 1) != 0) return quote(key);
    const bool silent = key == ' ' || key == 13 || key == 3;
    if ((mask & 4) == 0 || (sentenceFlags & 1) == 0 || silent) return {};
    sentenceFlags = 0;
    if (key < 'a' || key > 'z') return {};
    return Replacement{static_cast<std::uint8_t>(key - 32), 0};
  }

  /// First byte of the UTF-8 form; half a pair alone has none.
  static std::uint8_t leadByte(const std::u16string& text) {
    if (text.empty()) return 0;
    const char16_t unit = text[0];
    if (unit < 0x80) return static_cast<std::uint8_t>(unit);
    if (unit < 0x800) return static_cast<std::uint8_t>(0xC0 | unit >> 6);
    if (unit < 0xD800 || unit > 0xDFFF) return static_cast<std::uint8_t>(0xE0 | unit >> 12);
    const bool pair = unit < 0xDC00 && text.size() > 1 && text[1] >= 0xDC00 && text[1] < 0xE000;
    return pair ? static_cast<std::uint8_t>(0xF0 | (0x40u + (unit & 0x3FFu)) >> 8) : 0;
  }

  void losePlace() { place = length; }

  void typed(std::uint8_t key, bool replaced) {
    if (key != 0) published = false;
    if (key == 8 || key == 127) {
      if (cursor > 0 && dashOfTwo(cursor - 1)) erase();
      return erase();
    }
    if ((key == 28 && cursor == 0) || (key == 29 && cursor == length)) losePlace();
    if (key == 28 && cursor > 0) {
      editState |= 1;
      cursor -= dashOfTwo(cursor - 1) ? 2 : 1;
    } else if (key == 29) {
      cursor += cursor == length ? 0 : dashOfTwo(cursor + 1) ? 2 : 1;
    }
    const bool silent = key == 0 || key == 27 || key == 28 || key == 29;
    if (!silent) insert(key < 0x80 || replaced ? key : key + kTyped);
  }

 private:
  static constexpr char16_t kTyped = 0x100;

  [[nodiscard]] std::string bytes(std::uint32_t count) const {
    std::string text;
    for (std::uint32_t i = 0; i < count; ++i) text += static_cast<char>(cells[i]);
    return text;
  }

  /// Made of two hyphens, and one character in the document.
  [[nodiscard]] bool dashOfTwo(std::uint32_t at) const {
    return at > 0 && at < length && cells[at] == 209 && cells[at - 1] == '-';
  }

  /// -- becomes an em dash, and on: an en dash, a hyphen, an em dash again.
  [[nodiscard]] std::optional<Replacement> dash() const {
    if (cursor < place + (isBefore(1, "-") ? 1 : 0)) return {};
    if (isBefore(1, "-")) return Replacement{209, 1};
    if (isBefore(1, "\xD1")) return Replacement{208, 0};
    if (isBefore(1, "\xD0")) return Replacement{'-', 0};
    return {};
  }

  [[nodiscard]] Replacement quote(std::uint8_t key) const {
    const bool single = key == '\'';
    const bool opens =
        cursor == 0 || isBefore(1, " \t\r\f\xCA\xD3\xD4") || (single && isBefore(1, "'\xD5"));
    return {static_cast<std::uint8_t>((single ? 212 : 210) + (opens ? 0 : 1)), 0};
  }

  void insert(int cell) {
    makeRoom();
    if (length == 0) place = 0;
    if (cursor < place) ++place;
    if (cursor < length) moveTail(cursor + 1);
    cells[cursor++] = static_cast<char16_t>(cell);
    cells[++length] = 0;
  }

  void erase() {
    if (cursor == 0 || length == 0) return;
    if (cursor < length) moveTail(cursor - 1);
    cells[length] = 0;
    if (cursor <= place) --place;
    --cursor;
    --length;
  }

  /// The tail goes with the byte behind it; what lies further behind stays.
  void moveTail(std::uint32_t to) {
    const std::u16string tail = cells.substr(cursor, length - cursor + 1);
    cells.replace(to, tail.size(), tail);
    cells.resize(385);
  }

  void makeRoom() {
    if (length < 320) return;
    if (isBefore(1, " \r\t")) {
      const bool sentenceEnds = isBefore(2, ".?!\r");
      if (!sentenceEnds && length < 368) return;
      if (!sentenceEnds) editState = 2;
      forget();
    } else if (length >= 384) {
      if (length > cursor + 32) {
        length = cursor;
      } else {
        cancel();
      }
    }
  }

  [[nodiscard]] bool isBefore(std::uint32_t distance, std::string_view set) const {
    if (cursor < distance || cells[cursor - distance] >= kTyped) return false;
    return set.find(static_cast<char>(cells[cursor - distance])) != std::string_view::npos;
  }

  void forget() { cursor = length = 0; }
};

}  // namespace quorvane::model
