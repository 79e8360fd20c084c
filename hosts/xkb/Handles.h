#pragma once
// Owners of what the keymap library hands out; null: it had none.

#include <xkbcommon/xkbcommon-compose.h>

#include <memory>

namespace quorvane::xkb {

template <auto release>
struct Release {
  template <class Object>
  void operator()(Object* object) const {
    release(object);
  }
};

using Context = std::unique_ptr<xkb_context, Release<xkb_context_unref>>;
using Keymap = std::unique_ptr<xkb_keymap, Release<xkb_keymap_unref>>;
using State = std::unique_ptr<xkb_state, Release<xkb_state_unref>>;
using ComposeTable = std::unique_ptr<xkb_compose_table, Release<xkb_compose_table_unref>>;
using ComposeState = std::unique_ptr<xkb_compose_state, Release<xkb_compose_state_unref>>;

}  // namespace quorvane::xkb
