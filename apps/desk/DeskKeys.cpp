#include "apps/desk/DeskKeys.h"

#define NCURSES_NOMACROS
#include <curses.h>

#include <algorithm>
#include <array>
#include <span>

#include "platform/AppKitEvents.h"

namespace quorvane::desk {
namespace {

struct Meaning {
  int key;
  DeskKey meaning;
};

constexpr DeskKey typed(char32_t code) { return {DeskCommand::Type, code}; }
constexpr int kControlC = 3;
constexpr int kControlQ = 17;

constexpr std::array<Meaning, 9> kControls{{
    {1, {DeskCommand::Type, U'a', NSEventModifierFlagCommand}},
    {8, typed(8)},
    {9, typed(9)},
    {10, typed(13)},
    {13, typed(13)},
    {27, typed(27)},
    {127, typed(8)},  // what terminals send for Backspace
    {kControlC, {DeskCommand::Quit}},
    {kControlQ, {DeskCommand::Quit}},
}};

constexpr std::array<Meaning, 15> kCodes{{
    {KEY_LEFT, typed(28)},
    {KEY_RIGHT, typed(29)},
    {KEY_UP, typed(30)},
    {KEY_DOWN, typed(31)},
    {KEY_HOME, typed(1)},
    {KEY_END, typed(4)},
    {KEY_PPAGE, typed(11)},
    {KEY_NPAGE, typed(12)},
    {KEY_BACKSPACE, typed(8)},
    {KEY_DC, typed(127)},
    {KEY_ENTER, typed(3)},
    {KEY_F(2), {DeskCommand::ToggleAnnotation}},
    {KEY_F(3), {DeskCommand::TapShift}},
    {KEY_F(9), {DeskCommand::Menu}},
    {KEY_F(10), {DeskCommand::Quit}},
}};

std::optional<DeskKey> find(std::span<const Meaning> table, int key) {
  const auto found = std::ranges::find(table, key, &Meaning::key);
  return found == table.end() ? std::nullopt : std::optional(found->meaning);
}

}  // namespace

std::optional<DeskKey> keyOfCharacter(char32_t character) {
  if (character < 32 || character == 127) return find(kControls, static_cast<int>(character));
  const bool control = character < 160 && character > 127;
  return control ? std::nullopt : std::optional(typed(character));
}

std::optional<DeskKey> keyOfCode(int code) { return find(kCodes, code); }

}  // namespace quorvane::desk
