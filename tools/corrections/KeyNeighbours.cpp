#include "tools/corrections/KeyNeighbours.h"

#include <cmath>
#include <optional>

#include "hosts/keyboard/Translate.h"

namespace quorvane::corrections {

namespace {

/// Virtual key codes by their places on an ANSI keyboard, from the left.
constexpr std::array<std::array<std::uint16_t, 11>, 3> kRows{
    {{12, 13, 14, 15, 17, 16, 32, 34, 31, 35, 33},
     {0, 1, 2, 3, 5, 4, 38, 40, 37, 41, 39},
     {6, 7, 8, 9, 11, 45, 46, 43, 47, 44, 44}}};
/// How far each row is set in, in keys.
constexpr std::array<double, 3> kIndents{0.0, 0.25, 0.75};
/// Between the middles of two keys that touch.
constexpr double kReach = 1.3;

struct Place {
  double across = 0;
  double down = 0;
};
using Places = std::array<std::optional<Place>, kLetters>;

std::optional<Letter> letterOn(std::span<const std::uint8_t> keyLayout, std::uint16_t keyCode) {
  keyboard::Translator translator;
  std::array<char16_t, 4> typed{};
  std::uint32_t deadKey = 0;
  std::size_t length = 0;
  const OSStatus status = translator.UCKeyTranslate(
      keyLayout, keyCode, kUCKeyActionDown, 0, keyboard::kKeyboardType, 0, deadKey, typed, length);
  if (status != noErr || length != 1 || typed[0] >= 128) return std::nullopt;
  const char character = static_cast<char>(typed[0]);
  if (!isWordCharacter(character)) return std::nullopt;
  return letterOf(character);
}

Places placesOf(std::span<const std::uint8_t> keyLayout) {
  Places places;
  for (std::size_t row = 0; row < kRows.size(); ++row) {
    for (std::size_t column = 0; column < kRows[row].size(); ++column) {
      const auto letter = letterOn(keyLayout, kRows[row][column]);
      if (letter && !places[*letter]) {
        places[*letter] =
            Place{static_cast<double>(column) + kIndents[row], static_cast<double>(row)};
      }
    }
  }
  return places;
}

}  // namespace

KeyNeighbours::KeyNeighbours(std::span<const std::uint8_t> keyLayout) {
  const Places places = placesOf(keyLayout);
  for (Letter one = 0; one < kLetters; ++one) {
    for (Letter other = 0; other < kLetters; ++other) {
      if (one == other || !places[one] || !places[other]) continue;
      const double distance = std::hypot(places[one]->across - places[other]->across,
                                         places[one]->down - places[other]->down);
      if (distance < kReach) near_[one] |= 1U << other;
    }
  }
}

}  // namespace quorvane::corrections
