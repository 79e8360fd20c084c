#include "tools/scenario/Words.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <system_error>

#include "platform/AppKitEvents.h"
#include "src/base/Text.h"

namespace quorvane::scenario {
namespace {

constexpr std::string_view kSpaces = " \t\r";
constexpr std::string_view kMarks = ",:";

char32_t rawByte(std::uint32_t byte) { return byte < 0x80 ? byte : kRawByte + byte; }

// Takes one character off UTF-8 text.
char32_t takeCharacter(std::string_view& rest) {
  const auto first = static_cast<unsigned char>(rest.front());
  const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  bool valid = (first < 0x80 || first >= 0xC2) && first < 0xF5 && length <= rest.size();
  char32_t character = length == 1 ? first : first & (0x7Fu >> length);
  for (std::size_t i = 1; valid && i < length; ++i) {
    const auto next = static_cast<unsigned char>(rest[i]);
    valid = (next & 0xC0) == 0x80;
    character = (character << 6) | (next & 0x3F);
  }
  if (!valid) throw BadStatement("the text isn't valid UTF-8");
  rest.remove_prefix(length);
  return character;
}

// The number between the braces of \x{...} and \d{...}.
std::uint32_t takeBraced(std::string_view& rest, int base, std::uint32_t largest) {
  const std::size_t end = rest.find('}');
  if (rest.empty() || rest.front() != '{' || end == std::string_view::npos) {
    throw BadStatement("an escape lacks its {...}");
  }
  std::uint32_t number = 0;
  const auto [stop, error] = std::from_chars(rest.data() + 1, rest.data() + end, number, base);
  if (error != std::errc{} || stop != rest.data() + end || number > largest) {
    throw BadStatement("an escape isn't a number that a text may have");
  }
  rest.remove_prefix(end + 1);
  return number;
}

char32_t takeEscape(std::string_view& rest) {
  if (rest.empty()) throw BadStatement("a text ends in a backslash");
  const char kind = rest.front();
  rest.remove_prefix(1);
  switch (kind) {
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    case 'x':
      return takeBraced(rest, 16, 0x10FFFF);
    case 'd':
      return rawByte(takeBraced(rest, 10, 0xFF));
    case '"':
    case '\\':
      return static_cast<char32_t>(kind);
    default:
      throw BadStatement(std::string("unknown escape \\") + kind);
  }
}

Word takeQuoted(std::string_view& rest) {
  Word word;
  word.quoted = true;
  rest.remove_prefix(1);
  while (!rest.empty() && rest.front() != '"') {
    if (rest.front() == '\\') {
      rest.remove_prefix(1);
      word.literal += takeEscape(rest);
    } else {
      word.literal += takeCharacter(rest);
    }
  }
  if (rest.empty()) throw BadStatement("a text has no closing quote");
  rest.remove_prefix(1);
  word.text = describe(word.literal);
  return word;
}

Word takePlain(std::string_view& rest) {
  std::size_t length = 1;
  if (rest.front() == '\'') {  // a four-character code may hold spaces
    const std::size_t end = rest.find('\'', 1);
    length = end == std::string_view::npos ? rest.size() : end + 1;
  } else {
    length = std::min(rest.find_first_of(kSpaces), rest.size());
    if (length > 1 && kMarks.find(rest[length - 1]) != std::string_view::npos) --length;
  }
  Word word;
  word.text = std::string(rest.substr(0, length));
  rest.remove_prefix(length);
  return word;
}

void takeMark(std::string_view& rest, Word& word) {
  if (!rest.empty() && kMarks.find(rest.front()) != std::string_view::npos) {
    word.mark = rest.front();
    rest.remove_prefix(1);
  }
  if (!rest.empty() && kSpaces.find(rest.front()) == std::string_view::npos) {
    throw BadStatement("something follows " + word.text + " without a space");
  }
}

struct NamedKey {
  std::string_view name;
  char32_t code;
};
constexpr std::array<NamedKey, 15> kKeys{{{"left", 28},
                                          {"right", 29},
                                          {"up", 30},
                                          {"down", 31},
                                          {"page-up", 11},
                                          {"page-down", 12},
                                          {"home", 1},
                                          {"end", 4},
                                          {"escape", 27},
                                          {"enter", 3},
                                          {"return", 13},
                                          {"tab", 9},
                                          {"space", 32},
                                          {"backspace", 8},
                                          {"forward-delete", 127}}};

constexpr std::array<NamedKey, 7> kModifiers{{{"command", NSEventModifierFlagCommand},
                                              {"option", NSEventModifierFlagOption},
                                              {"control", NSEventModifierFlagControl},
                                              {"shift", NSEventModifierFlagShift},
                                              {"caps-lock", NSEventModifierFlagCapsLock},
                                              {"function", NSEventModifierFlagFunction},
                                              {"none", 0}}};

template <std::size_t Size>
const NamedKey* find(const std::array<NamedKey, Size>& keys, std::string_view name) {
  for (const NamedKey& key : keys) {
    if (key.name == name) return &key;
  }
  return nullptr;
}

std::optional<char32_t> keyCharacter(std::string_view name) {
  if (const NamedKey* key = find(kKeys, name)) return key->code;
  if (name.empty()) return std::nullopt;
  const char32_t character = takeCharacter(name);
  return name.empty() ? std::optional(character) : std::nullopt;
}

template <class Number>
std::optional<Number> parseWhole(std::string_view word, int base) {
  Number number{};
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number, base);
  const bool whole = error == std::errc{} && end == word.data() + word.size();
  return whole ? std::optional(number) : std::nullopt;
}

}  // namespace

std::vector<Word> splitWords(std::string_view line) {
  std::vector<Word> words;
  for (;;) {
    line.remove_prefix(std::min(line.find_first_not_of(kSpaces), line.size()));
    if (line.empty() || line.front() == '#') return words;
    words.push_back(line.front() == '"' ? takeQuoted(line) : takePlain(line));
    takeMark(line, words.back());
  }
}

std::optional<std::int64_t> parseNumber(std::string_view word) {
  if (word.starts_with("0x")) return parseHex(word.substr(2));
  if (word.size() == 6 && word.front() == '\'' && word.back() == '\'') {
    std::int64_t code = 0;
    for (const char c : word.substr(1, 4)) code = (code << 8) | static_cast<unsigned char>(c);
    return code;
  }
  return parseWhole<std::int64_t>(word, 10);
}

std::optional<std::uint32_t> parseHex(std::string_view word) {
  return parseWhole<std::uint32_t>(word, 16);
}

std::optional<double> parseMeasure(std::string_view word) {
  double number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  const bool whole = error == std::errc{} && end == word.data() + word.size();
  return whole ? std::optional(number) : std::nullopt;
}

Seconds parseDate(const std::string& text) {
  using std::chrono::sys_days;
  int year = 0;
  unsigned month = 0, day = 0, hour = 0, minute = 0, second = 0;
  if (std::sscanf(text.c_str(), "%4d-%2u-%2u %2u:%2u:%2u", &year, &month, &day, &hour, &minute,
                  &second) != 6) {
    throw BadStatement("no date of the form 2026-03-04 15:09:26");
  }
  const auto dayOf = [](int y, unsigned m, unsigned d) {
    return sys_days(std::chrono::year(y) / std::chrono::month(m) / std::chrono::day(d));
  };
  return dayOf(year, month, day) - dayOf(2001, 1, 1) + std::chrono::hours(hour) +
         std::chrono::minutes(minute) + std::chrono::seconds(second);
}

std::optional<Keystroke> parseKeystroke(std::string_view word) {
  Keystroke stroke;
  for (std::string_view rest = word; !rest.empty();) {
    const std::size_t plus = rest.find('+', 1);
    const std::string_view part = rest.substr(0, plus);
    const bool last = plus == std::string_view::npos;
    if (const NamedKey* modifier = find(kModifiers, part)) {
      stroke.modifierFlags |= modifier->code;
    } else if (const auto character = keyCharacter(part); character && last) {
      stroke.character = *character;
    } else {
      return std::nullopt;
    }
    rest = last ? std::string_view{} : rest.substr(plus + 1);
  }
  return stroke;
}

Literal literalFromBytes(std::span<const std::uint8_t> bytes) {
  Literal literal;
  for (const std::uint8_t byte : bytes) literal += rawByte(byte);
  return literal;
}

Literal literalFromBytes(std::string_view bytes) {
  return literalFromBytes({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

Literal literalFromUtf16(std::u16string_view text) {
  const std::string utf8 = toUtf8(text);
  Literal literal;
  for (std::string_view rest = utf8; !rest.empty();) literal += takeCharacter(rest);
  return literal;
}

std::string toBytes(const Literal& literal) {
  std::string bytes;
  for (const char32_t character : literal) {
    if (character >= kRawByte) {
      bytes += static_cast<char>(character - kRawByte);
    } else {
      bytes += toUtf8(toUtf16({character}));
    }
  }
  return bytes;
}

std::u16string toUtf16(const Literal& literal) {
  std::u16string text;
  for (char32_t character : literal) {
    if (character >= kRawByte) character -= kRawByte;
    if (character >= 0x10000) {
      text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
      text += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
    } else {
      text += static_cast<char16_t>(character);
    }
  }
  return text;
}

std::string describe(const Literal& literal) {
  std::string text;
  for (const char32_t character : literal) {
    if (character >= kRawByte) {
      text += "\\d{" + std::to_string(character - kRawByte) + "}";
    } else if (character == '\n' || character == '\r' || character == '\t') {
      text += character == '\n' ? "\\n" : character == '\r' ? "\\r" : "\\t";
    } else if (character < 0x20) {
      text += "\\d{" + std::to_string(static_cast<unsigned>(character)) + "}";
    } else {
      text += toUtf8(toUtf16({character}));
    }
  }
  return text;
}

std::string describeCode(std::uint32_t code) {
  std::string text = "'";
  for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>((code >> shift) & 0xFF);
  for (const char c : text) {
    if (c < 0x20 || c > 0x7E) return std::to_string(code);
  }
  return text + "'";
}

std::size_t choose(std::string_view word, std::string_view from) {
  std::size_t index = 0;
  for (std::string_view rest = from; !rest.empty(); ++index) {
    const std::size_t end = std::min(rest.find(' '), rest.size());
    if (rest.substr(0, end) == word) return index;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  throw BadStatement(std::string(word) + " is none of " + std::string(from));
}

bool matches(std::string_view pattern, std::string_view text) {
  const std::size_t star = pattern.find('*');
  if (star == std::string_view::npos) return pattern == text;
  if (!text.starts_with(pattern.substr(0, star))) return false;
  text.remove_prefix(star);
  pattern.remove_prefix(star + 1);
  // Between two stars the first place that fits is as good as any other.
  for (std::size_t next = pattern.find('*'); next != std::string_view::npos;
       next = pattern.find('*')) {
    const std::size_t place = text.find(pattern.substr(0, next));
    if (place == std::string_view::npos) return false;
    text.remove_prefix(place + next);
    pattern.remove_prefix(next + 1);
  }
  return text.ends_with(pattern);
}

}  // namespace quorvane::scenario
