#include "tools/parameters/ShortcutNames.h"

#include <algorithm>
#include <stdexcept>

#include "hosts/keyboard/PrintedKeys.h"
#include "platform/CarbonEvents.h"

namespace quorvane::parameters {
namespace {

constexpr std::string_view kNone = "none";

struct ModifierName {
  std::string_view name;
  std::uint32_t mask;
};
constexpr std::array<ModifierName, 8> kModifierNames{{{"cmd", cmdKey},
                                                      {"control", controlKey},
                                                      {"option", optionKey},
                                                      {"shift", shiftKey},
                                                      {"fn", kEventKeyModifierFnMask},
                                                      // Other names of the same.
                                                      {"command", cmdKey},
                                                      {"ctrl", controlKey},
                                                      {"alt", optionKey}}};

struct NamedKey {
  std::string_view name;
  std::int16_t code;
  std::uint32_t modifier;  ///< which the key carries by itself
};
constexpr std::array<NamedKey, 16> kNamedKeys{{{"space", 49, 0},
                                               {"f1", 122, kEventKeyModifierFnMask},
                                               {"f2", 120, kEventKeyModifierFnMask},
                                               {"f3", 99, kEventKeyModifierFnMask},
                                               {"f4", 118, kEventKeyModifierFnMask},
                                               {"f5", 96, kEventKeyModifierFnMask},
                                               {"f6", 97, kEventKeyModifierFnMask},
                                               {"f7", 98, kEventKeyModifierFnMask},
                                               {"f8", 100, kEventKeyModifierFnMask},
                                               {"f9", 101, kEventKeyModifierFnMask},
                                               {"f10", 109, kEventKeyModifierFnMask},
                                               {"f11", 103, kEventKeyModifierFnMask},
                                               {"f12", 111, kEventKeyModifierFnMask},
                                               {"f13", 105, kEventKeyModifierFnMask},
                                               {"f14", 107, kEventKeyModifierFnMask},
                                               {"f15", 113, kEventKeyModifierFnMask}}};

[[noreturn]] void fail(std::string_view what, std::string_view word, std::string_view known) {
  throw std::invalid_argument(
      std::string(what).append(" \"").append(word).append("\"; known are ").append(known));
}

std::uint32_t maskOf(std::string_view name) {
  const auto* const known = std::ranges::find(kModifierNames, name, &ModifierName::name);
  if (known == kModifierNames.end()) fail("no modifier", name, "cmd, control, option, shift, fn");
  return known->mask;
}

NamedKey keyOf(std::string_view name) {
  const auto* const known = std::ranges::find(kNamedKeys, name, &NamedKey::name);
  if (known != kNamedKeys.end()) return *known;
  const std::size_t at = name.size() == 1 ? keyboard::kUSPrint[0].find(name) : std::string::npos;
  if (at == std::string::npos) fail("no key", name, "a to z, 0 to 9, marks, space, f1 to f15");
  return {name, keyboard::kPrintedKeys.at(at), 0};
}

std::string nameOf(const KeyShortcut& shortcut) {
  const auto* const known = std::ranges::find(kNamedKeys, shortcut.key, &NamedKey::code);
  if (known != kNamedKeys.end()) return std::string(known->name);
  const auto* const printed = std::ranges::find(keyboard::kPrintedKeys, shortcut.key);
  if (printed == keyboard::kPrintedKeys.end()) return "key " + std::to_string(shortcut.key);
  const auto at = static_cast<std::size_t>(printed - keyboard::kPrintedKeys.begin());
  return {keyboard::kUSPrint[0].at(at)};
}

}  // namespace

KeyShortcut shortcutOf(FourCharCode command, std::string_view keys) {
  KeyShortcut shortcut{.command = command};
  if (keys == kNone) return shortcut;
  for (std::size_t plus = keys.find('+'); plus != std::string_view::npos; plus = keys.find('+')) {
    shortcut.modifiers |= maskOf(keys.substr(0, plus));
    keys.remove_prefix(plus + 1);
  }
  const NamedKey key = keyOf(keys);
  shortcut.key = key.code;
  shortcut.modifiers |= key.modifier;
  if ((shortcut.modifiers & ~shiftKey) == 0) {
    throw std::invalid_argument("a shortcut needs cmd, control or option, or a function key");
  }
  return shortcut;
}

std::string keysOf(const KeyShortcut& shortcut) {
  if (shortcut.key == -1) return std::string(kNone);
  const auto* const named = std::ranges::find(kNamedKeys, shortcut.key, &NamedKey::code);
  const std::uint32_t own = named == kNamedKeys.end() ? 0 : named->modifier;
  std::uint32_t left = shortcut.modifiers & ~own;
  std::string text;
  for (const ModifierName& each : kModifierNames) {
    if ((left & each.mask) != 0) text.append(each.name).append("+");
    left &= ~each.mask;
  }
  return text + nameOf(shortcut);
}

}  // namespace quorvane::parameters
