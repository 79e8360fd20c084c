#include "hosts/ibus/Composer.h"

#include <xkbcommon/xkbcommon-compose.h>

#include <array>
#include <clocale>

#include "hosts/xkb/SymbolText.h"

namespace quorvane::ibus {

Composer::Composer() : context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
  if (!context_) return;
  const char* const locale = std::setlocale(LC_CTYPE, nullptr);
  table_.reset(
      xkb_compose_table_new_from_locale(context_.get(), locale, XKB_COMPOSE_COMPILE_NO_FLAGS));
  if (table_) state_.reset(xkb_compose_state_new(table_.get(), XKB_COMPOSE_STATE_NO_FLAGS));
}

std::optional<std::u16string> Composer::feed(std::uint32_t keyval) {
  if (!state_) return std::nullopt;
  const auto result = xkb_compose_state_feed(state_.get(), keyval);
  if (result == XKB_COMPOSE_FEED_IGNORED) return std::nullopt;
  switch (xkb_compose_state_get_status(state_.get())) {
    case XKB_COMPOSE_NOTHING:
      return std::nullopt;
    case XKB_COMPOSE_COMPOSED: {
      std::array<char, 256> utf8{};
      xkb_compose_state_get_utf8(state_.get(), utf8.data(), utf8.size());
      return xkb::fromUtf8(utf8.data());
    }
    case XKB_COMPOSE_COMPOSING:
    case XKB_COMPOSE_CANCELLED:
      break;
  }
  return std::u16string();
}

void Composer::reset() {
  if (state_) xkb_compose_state_reset(state_.get());
}

}  // namespace quorvane::ibus
