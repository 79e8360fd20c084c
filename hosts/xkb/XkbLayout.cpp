#include "hosts/xkb/XkbLayout.h"

#include <set>
#include <span>
#include <stdexcept>

#include "hosts/keyboard/Keyboard.h"
#include "hosts/keyboard/StandardTables.h"
#include "hosts/xkb/Compose.h"
#include "hosts/xkb/KeyNames.h"
#include "hosts/xkb/SymbolText.h"
#include "platform/AppKitEvents.h"

namespace quorvane::xkb {
namespace {

using keyboard::KeyOutput;
using keyboard::LayoutData;
using keyboard::LayoutTables;

void stayQuiet(xkb_context* /*context*/, xkb_log_level /*level*/, const char* /*format*/,
               va_list /*values*/) {}

/// The environment names no keymap behind our back, and complaints don't go to standard error.
Context newContext() {
  Context context(xkb_context_new(static_cast<xkb_context_flags>(
      XKB_CONTEXT_NO_DEFAULT_INCLUDES | XKB_CONTEXT_NO_ENVIRONMENT_NAMES)));
  if (!context) return context;
  xkb_context_set_log_fn(context.get(), stayQuiet);
  xkb_context_include_path_append_default(context.get());
  return context;
}

Keymap newKeymap(xkb_context* context, const RuleNames& names) {
  const xkb_rule_names rules{names.rules.c_str(), names.model.c_str(), names.layout.c_str(),
                             names.variant.c_str(), names.options.c_str()};
  return Keymap(xkb_keymap_new_from_names(context, &rules, XKB_KEYMAP_COMPILE_NO_FLAGS));
}

class KeymapReader {
 public:
  KeymapReader(xkb_context* context, xkb_keymap* keymap)
      : context_(context), keymap_(keymap), state_(xkb_state_new(keymap)) {}

  LayoutTables tables();

 private:
  /// The modifiers that pressing the key brings about; 0 where there is no such key.
  [[nodiscard]] xkb_mod_mask_t modifiersOf(const char* keyName) const;
  void readTable(keyboard::StandardTable table, xkb_mod_mask_t modifiers);
  KeyOutput read(xkb_keycode_t key, xkb_mod_mask_t modifiers);
  KeyOutput severalSymbols(xkb_keycode_t key) const;
  std::uint16_t deadKey(xkb_keysym_t symbol);

  xkb_context* context_;
  xkb_keymap* keymap_;
  State state_;
  xkb_mod_mask_t numberLock_ = 0;
  LayoutTables made_ = keyboard::standardTables();
  Symbols symbols_;
  std::vector<xkb_keysym_t> deadKeys_;  ///< numbered from 1
};

LayoutTables KeymapReader::tables() {
  const xkb_mod_mask_t shift = modifiersOf("LFSH");
  const xkb_mod_mask_t caps = modifiersOf("CAPS");
  const xkb_mod_mask_t option = modifiersOf("LVL3");
  numberLock_ = modifiersOf("NMLK");
  readTable(keyboard::kPlain, 0);
  readTable(keyboard::kShift, shift);
  readTable(keyboard::kCaps, caps);
  readTable(keyboard::kOption, option);
  readTable(keyboard::kOptionShift, option | shift);
  readTable(keyboard::kCapsOption, caps | option);
  if (deadKeys_.empty()) return std::move(made_);
  Compose compose(context_);
  for (const xkb_keysym_t symbol : deadKeys_) {
    made_.deadKeys.push_back(compose.deadKey(symbol, symbols_));
  }
  return std::move(made_);
}

xkb_mod_mask_t KeymapReader::modifiersOf(const char* keyName) const {
  const xkb_keycode_t key = xkb_keymap_key_by_name(keymap_, keyName);
  if (key == XKB_KEYCODE_INVALID) return 0;
  const State pressed(xkb_state_new(keymap_));
  xkb_state_update_key(pressed.get(), key, XKB_KEY_DOWN);
  return xkb_state_serialize_mods(pressed.get(), XKB_STATE_MODS_EFFECTIVE);
}

void KeymapReader::readTable(keyboard::StandardTable table, xkb_mod_mask_t modifiers) {
  for (const KeyName& name : kKeyNames) {
    const xkb_keycode_t key = xkb_keymap_key_by_name(keymap_, name.name);
    if (key == XKB_KEYCODE_INVALID) continue;
    made_.tables[table][name.keyCode] = read(key, name.keypad ? numberLock_ : modifiers);
  }
}

KeyOutput KeymapReader::read(xkb_keycode_t key, xkb_mod_mask_t modifiers) {
  xkb_state_update_mask(state_.get(), modifiers, 0, 0, 0, 0, 0);
  const xkb_keysym_t symbol = xkb_state_key_get_one_sym(state_.get(), key);
  if (symbol == XKB_KEY_NoSymbol) return severalSymbols(key);
  if (isDeadKey(symbol)) return {{}, deadKey(symbol)};
  KeyOutput output{textOf(symbol), 0};
  if (!output.text.empty()) symbols_.emplace(output.text, symbol);
  return output;
}

KeyOutput KeymapReader::severalSymbols(xkb_keycode_t key) const {
  const xkb_keysym_t* symbols = nullptr;
  const int count = xkb_state_key_get_syms(state_.get(), key, &symbols);
  KeyOutput output;
  for (int i = 0; i < count; ++i) output.text += textOf(symbols[i]);
  return output;
}

std::uint16_t KeymapReader::deadKey(xkb_keysym_t symbol) {
  const auto place = std::find(deadKeys_.begin(), deadKeys_.end(), symbol);
  const auto number = place - deadKeys_.begin() + 1;
  if (place == deadKeys_.end()) deadKeys_.push_back(symbol);
  return static_cast<std::uint16_t>(number);
}

}  // namespace

LayoutData layoutOf(const RuleNames& names) {
  const Context context = newContext();
  if (!context) return nullptr;
  const Keymap keymap = newKeymap(context.get(), names);
  if (!keymap) return nullptr;
  try {
    return keyboard::writeLayout(KeymapReader(context.get(), keymap.get()).tables());
  } catch (const std::length_error&) {
    return nullptr;
  }
}

bool typesAscii(const LayoutData& layout) {
  keyboard::Keyboard keys([&] { return layout; });
  std::set<char16_t> typed;
  constexpr std::uint32_t kShift = NSEventModifierFlagShift;
  constexpr std::uint32_t kOption = NSEventModifierFlagOption;
  for (const std::uint32_t flags : {0U, kShift, kOption, kShift | kOption}) {
    for (std::uint16_t keyCode = 0; keyCode < keyboard::kKeyCount; ++keyCode) {
      const std::u16string text = keys.charactersForKey(keyCode, flags);
      if (text.size() == 1) typed.insert(text.front());
    }
  }
  for (char16_t character = u' '; character <= u'~'; ++character) {
    if (!typed.contains(character)) return false;
  }
  return true;
}

}  // namespace quorvane::xkb
