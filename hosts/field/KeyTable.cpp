#include "hosts/field/KeyTable.h"

#include <array>

#include "platform/AppKitEvents.h"

namespace quorvane::field {
namespace {

struct PrintedKey {
  std::uint16_t keyCode;
  char plain;
  char shifted;
};

constexpr std::array<PrintedKey, 48> kPrintedKeys{{
    {0, 'a', 'A'},   {1, 's', 'S'},  {2, 'd', 'D'},   {3, 'f', 'F'},  {4, 'h', 'H'},
    {5, 'g', 'G'},   {6, 'z', 'Z'},  {7, 'x', 'X'},   {8, 'c', 'C'},  {9, 'v', 'V'},
    {11, 'b', 'B'},  {12, 'q', 'Q'}, {13, 'w', 'W'},  {14, 'e', 'E'}, {15, 'r', 'R'},
    {16, 'y', 'Y'},  {17, 't', 'T'}, {18, '1', '!'},  {19, '2', '@'}, {20, '3', '#'},
    {21, '4', '$'},  {22, '6', '^'}, {23, '5', '%'},  {24, '=', '+'}, {25, '9', '('},
    {26, '7', '&'},  {27, '-', '_'}, {28, '8', '*'},  {29, '0', ')'}, {30, ']', '}'},
    {31, 'o', 'O'},  {32, 'u', 'U'}, {33, '[', '{'},  {34, 'i', 'I'}, {35, 'p', 'P'},
    {37, 'l', 'L'},  {38, 'j', 'J'}, {39, '\'', '"'}, {40, 'k', 'K'}, {41, ';', ':'},
    {42, '\\', '|'}, {43, ',', '<'}, {44, '/', '?'},  {45, 'n', 'N'}, {46, 'm', 'M'},
    {47, '.', '>'},  {49, ' ', ' '}, {50, '`', '~'},
}};

/// Keys with a classic code in place of a character.
struct CodeKey {
  std::uint16_t keyCode;
  char code;
  bool function;
};

constexpr std::array<CodeKey, 14> kCodeKeys{{
    {36, 13, false},
    {76, 3, false},
    {48, 9, false},
    {51, 8, false},
    {53, 27, false},
    {123, 28, false},
    {124, 29, false},
    {125, 31, false},
    {126, 30, false},
    {115, 1, true},
    {119, 4, true},
    {116, 11, true},
    {121, 12, true},
    {117, 127, true},
}};

struct ModifierBits {
  std::uint32_t flag;
  std::uint32_t classic;
};

constexpr std::array<ModifierBits, 6> kModifiers{{
    {NSEventModifierFlagCommand, cmdKey},
    {NSEventModifierFlagShift, shiftKey},
    {NSEventModifierFlagCapsLock, alphaLock},
    {NSEventModifierFlagOption, optionKey},
    {NSEventModifierFlagControl, controlKey},
    {NSEventModifierFlagFunction, kEventKeyModifierFnMask},
}};

bool isLetter(char character) { return character >= 'a' && character <= 'z'; }

}  // namespace

std::optional<Key> keyForCharacter(char32_t character) {
  for (const PrintedKey& key : kPrintedKeys) {
    const bool plain = character == static_cast<char32_t>(key.plain);
    if (plain || character == static_cast<char32_t>(key.shifted)) {
      return Key{key.keyCode, !plain, false};
    }
  }
  for (const CodeKey& key : kCodeKeys) {
    if (character == static_cast<char32_t>(key.code)) return Key{key.keyCode, false, key.function};
  }
  return std::nullopt;
}

std::u16string charactersForKey(std::uint16_t keyCode, std::uint32_t modifierFlags) {
  const bool shift = (modifierFlags & NSEventModifierFlagShift) != 0;
  const bool capsLock = (modifierFlags & NSEventModifierFlagCapsLock) != 0;
  for (const PrintedKey& key : kPrintedKeys) {
    if (key.keyCode != keyCode) continue;
    const bool upper = shift || (capsLock && isLetter(key.plain));
    return {static_cast<char16_t>(upper ? key.shifted : key.plain)};
  }
  for (const CodeKey& key : kCodeKeys) {
    if (key.keyCode == keyCode) return {static_cast<char16_t>(key.code)};
  }
  return {};
}

std::uint32_t classicModifiers(std::uint32_t modifierFlags) {
  std::uint32_t mask = 0;
  for (const ModifierBits& modifier : kModifiers) {
    if (modifierFlags & modifier.flag) mask |= modifier.classic;
  }
  return mask;
}

}  // namespace quorvane::field
