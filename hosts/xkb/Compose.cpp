#include "hosts/xkb/Compose.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <array>
#include <string>
#include <string_view>

#include "hosts/xkb/SymbolText.h"

namespace quorvane::xkb {
namespace {

constexpr const char* kLocale = "en_US.UTF-8";
constexpr std::string_view kDead = "dead_";

/// Dead keys whose character goes by another name than their own.
struct OtherName {
  xkb_keysym_t deadKey;
  xkb_keysym_t character;
};
constexpr std::array<OtherName, 3> kOtherNames{{
    {XKB_KEY_dead_circumflex, XKB_KEY_asciicircum},
    {XKB_KEY_dead_tilde, XKB_KEY_asciitilde},
    {XKB_KEY_dead_abovering, XKB_KEY_degree},
}};

std::string nameOf(xkb_keysym_t symbol) {
  std::array<char, 64> name{};
  xkb_keysym_get_name(symbol, name.data(), name.size());
  return name.data();
}

std::u16string namesake(xkb_keysym_t deadKey) {
  for (const OtherName& other : kOtherNames) {
    if (other.deadKey == deadKey) return textOf(other.character);
  }
  const std::string name = nameOf(deadKey).substr(kDead.size());
  return textOf(xkb_keysym_from_name(name.c_str(), XKB_KEYSYM_NO_FLAGS));
}

}  // namespace

bool isDeadKey(xkb_keysym_t symbol) { return nameOf(symbol).starts_with(kDead); }

Compose::Compose(xkb_context* context)
    : table_(xkb_compose_table_new_from_locale(context, kLocale, XKB_COMPOSE_COMPILE_NO_FLAGS)) {
  if (table_) state_.reset(xkb_compose_state_new(table_.get(), XKB_COMPOSE_STATE_NO_FLAGS));
}

std::u16string Compose::composed(xkb_keysym_t deadKey, xkb_keysym_t symbol) {
  if (!state_) return {};
  xkb_compose_state_reset(state_.get());
  xkb_compose_state_feed(state_.get(), deadKey);
  xkb_compose_state_feed(state_.get(), symbol);
  if (xkb_compose_state_get_status(state_.get()) != XKB_COMPOSE_COMPOSED) return {};
  std::array<char, 256> utf8{};
  xkb_compose_state_get_utf8(state_.get(), utf8.data(), utf8.size());
  return fromUtf8(utf8.data());
}

std::u16string Compose::terminator(xkb_keysym_t deadKey) {
  for (const xkb_keysym_t second : {deadKey, xkb_keysym_t{XKB_KEY_space}}) {
    std::u16string text = composed(deadKey, second);
    if (!text.empty()) return text;
  }
  return namesake(deadKey);
}

keyboard::DeadKey Compose::deadKey(xkb_keysym_t symbol, const Symbols& symbols) {
  keyboard::DeadKey made{terminator(symbol), {}};
  for (const auto& [text, next] : symbols) {
    std::u16string result = composed(symbol, next);
    if (!result.empty()) made.composed.emplace(text, std::move(result));
  }
  return made;
}

}  // namespace quorvane::xkb
