#include "hosts/keyboard/Keyboard.h"

#include <algorithm>

#include "hosts/keyboard/SpecialKeys.h"
#include "hosts/keyboard/Translate.h"
#include "src/base/Modifiers.h"

namespace quorvane::keyboard {
namespace {

std::uint32_t modifierKeyState(std::uint32_t modifierFlags) {
  return (classicModifiers(modifierFlags) >> 8) & 0xFF;
}

const SpecialKey* specialKey(std::uint16_t keyCode) {
  const auto* const found = std::ranges::find(kSpecialKeys, keyCode, &SpecialKey::keyCode);
  return found == kSpecialKeys.end() ? nullptr : found;
}

std::u16string translated(const LayoutData& layout, std::uint16_t keyCode,
                          std::uint32_t modifierFlags, std::uint32_t options) {
  if (layout == nullptr) return {};
  std::array<char16_t, 64> units;
  std::uint32_t deadKeyState = 0;
  std::size_t length = 0;
  Translator().UCKeyTranslate(*layout, keyCode, kUCKeyActionDown, modifierKeyState(modifierFlags),
                              kKeyboardType, options, deadKeyState, units, length);
  return {units.data(), length};
}

/// Empty unless the text is just one.
std::optional<char32_t> oneCharacter(const std::u16string& text) {
  if (text.size() == 1) return text[0];
  if (text.size() != 2 || (text[0] & 0xFC00) != 0xD800 || (text[1] & 0xFC00) != 0xDC00) return {};
  return 0x10000 + ((text[0] & 0x3FFU) << 10) + (text[1] & 0x3FFU);
}

}  // namespace

std::optional<Key> Keyboard::keyForCharacter(char32_t character) {
  readLayout();
  const auto found = keys_.find(character);
  if (found == keys_.end()) return {};
  return found->second;
}

std::u16string Keyboard::charactersForKey(std::uint16_t keyCode, std::uint32_t modifierFlags) {
  if (const SpecialKey* const special = specialKey(keyCode)) return {special->code};
  return translated(layout_(), keyCode, modifierFlags, kUCKeyTranslateNoDeadKeysMask);
}

void Keyboard::readLayout() {
  const LayoutData layout = layout_();
  if (!keys_.empty() && layout == read_) return;
  read_ = layout;
  keys_.clear();
  for (const SpecialKey& key : kSpecialKeys) {
    keys_.emplace(key.code, Key{key.keyCode, false, false, key.function});
  }
  for (const auto& [shift, option] :
       {std::pair(false, false), {true, false}, {false, true}, {true, true}}) {
    const std::uint32_t flags =
        (shift ? NSEventModifierFlagShift : 0) | (option ? NSEventModifierFlagOption : 0);
    for (std::uint16_t keyCode = 0; keyCode < kKeyCount; ++keyCode) {
      const auto character = oneCharacter(translated(layout, keyCode, flags, 0));
      if (character) keys_.emplace(*character, Key{keyCode, shift, option, false});
    }
  }
}

}  // namespace quorvane::keyboard
