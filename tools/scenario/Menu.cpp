// Statements about the Input Menu: what its titles are made of, its opening, a choice in it, and
// how its items stand.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <stdexcept>

#include "hosts/menu/MenuTracking.h"
#include "tools/parameters/ParameterFileInMemory.h"
#include "tools/parameters/ShortcutNames.h"
#include "tools/scenario/World.h"

namespace quorvane::scenario {
namespace {

// Dates, and the two titles of the open-or-quit item.

void setDate(World& world, const Arguments& is) { world.host.clock.setDate(parseDate(is[0].word)); }
void setTimeZone(World& world, const Arguments& is) {
  world.host.dateFormatting.systemTimeZone = is[0].word;
}
void setLanguage(World& world, const Arguments& is) {
  world.host.dateFormatting.locale = is[0].word;
}
void setOpenAndQuit(World& world, const Arguments& is) {
  world.mustNotHaveStarted();
  std::vector<std::uint8_t> list{0, 2};
  for (const Argument& title : is) {
    const std::string bytes = toBytes(title.text);
    list.push_back(static_cast<std::uint8_t>(bytes.size()));
    list.insert(list.end(), bytes.begin(), bytes.end());
  }
  world.host.resources.openResult = 7;
  world.host.resources.bundle[{"STR#"_4cc, 131}] = list;
}

// Shortcuts in the parameter file.

parameters::KeyShortcut shortcutIn(const Argument& command, const Argument& keys) {
  try {
    return parameters::shortcutOf(command.u32(), toBytes(keys.text));
  } catch (const std::invalid_argument& error) {
    throw BadStatement(error.what());
  }
}
void setShortcutOfAll(World& world, const Arguments& is) {
  const auto shortcut = shortcutIn(is[0], is[1]);
  parameters::changeParameterFile(world.host.files,
                                  [&](auto& file) { setShortcut(file, shortcut); });
}
void setShortcutOfOne(World& world, const Arguments& is) {
  const auto shortcut = shortcutIn(is[0], is[2]);
  parameters::changeParameterFile(world.host.files,
                                  [&](auto& file) { setShortcut(file, is[1].u32(), shortcut); });
}

// Items: heads of submenus and leaves, depth first.

void gather(NSMenu& menu, std::vector<NSMenuItem*>& items) {
  for (const auto& item : menu.itemArray) {
    if (!item->separatorItem) items.push_back(item.get());
    if (item->submenu) gather(*item->submenu, items);
  }
}

std::vector<NSMenuItem*> items(World& world) {
  NSMenu* const menu = world.controller.menu();
  if (menu == nullptr) throw BadStatement("there is no menu");
  std::vector<NSMenuItem*> all;
  gather(*menu, all);
  return all;
}

NSMenuItem& itemTitled(World& world, const Literal& title) {
  for (NSMenuItem* const item : items(world)) {
    if (item->title == toUtf16(title)) return *item;
  }
  throw BadStatement("the menu has no item " + describe(title));
}

void openMenu(World& world, const Arguments& /*is*/) {
  const MenuTracking tracking(world.controller);
  world.settle();
}
void chooseItem(World& world, const Arguments& is) {
  MenuTracking tracking(world.controller);
  const bool chosen = tracking.choose(itemTitled(world, is[0].text));
  if (!chosen) world.expect(false, "an item that can be chosen", "disabled");
  world.settle();
}

struct ItemState {
  std::string_view name;
  bool (*holds)(World& world, const NSMenuItem& item);
};
constexpr std::array<ItemState, 4> kItemStates{{
    {"enabled", [](World& world, const auto& item) { return isEnabled(world.controller, item); }},
    {"disabled", [](World& world, const auto& item) { return !isEnabled(world.controller, item); }},
    {"checked", [](World& /*world*/, const auto& item) { return item.state == NSOnState; }},
    {"unchecked", [](World& /*world*/, const auto& item) { return item.state == NSOffState; }},
}};

const ItemState& stateOf(const Argument& name) {
  const auto* state = std::ranges::find(kItemStates, name.word, &ItemState::name);
  if (state == kItemStates.end()) throw BadStatement("no item is " + name.word);
  return *state;
}

void expectState(World& world, const Literal& title, const Argument& state) {
  const bool holds = stateOf(state).holds(world, itemTitled(world, title));
  world.expect(holds, "\"" + describe(title) + "\" " + state.word, "not " + state.word);
}
void expectItem(World& world, const Arguments& is) { expectState(world, is[0].text, is[1]); }
void expectItems(World& world, const Arguments& is) {
  for (const Literal& title : is[1].texts) expectState(world, title, is[0]);
}
void expectCount(World& world, const Arguments& is) {
  const ItemState& state = stateOf(is[1]);
  const auto all = items(world);
  world.expectNumber(is[0].number, std::ranges::count_if(all, [&](const NSMenuItem* item) {
                       return state.holds(world, *item);
                     }));
}
void expectTitle(World& world, const Arguments& is) {
  for (const NSMenuItem* const item : items(world)) {
    if (item->tag != is[0].number) continue;
    return world.expectEqual(describe(is[1].text), describe(literalFromUtf16(item->title)));
  }
  throw BadStatement("the menu has no item of tag " + is[0].word);
}

/// The key equivalent, and its modifiers: which of them the item shows is in the mask.
void expectKey(World& world, const Arguments& is) {
  const NSMenuItem& item = itemTitled(world, is[0].text);
  world.expectEqual(describe(is[1].text), describe(literalFromUtf16(item.keyEquivalent)));
  world.expectNumber(is[2].number, item.keyEquivalentModifierMask);
}

NSMenu& submenuTitled(World& world, const Literal& title) {
  NSMenuItem& head = itemTitled(world, title);
  if (!head.submenu) throw BadStatement(describe(title) + " is no submenu");
  return *head.submenu;
}
std::string titlesOf(const NSMenu& menu) {
  std::string titles;
  for (const auto& item : menu.itemArray) titles += describe(literalFromUtf16(item->title)) + "\n";
  return titles;
}
void expectSubmenu(World& world, const Arguments& is) {
  std::string titles;
  for (const Literal& title : is[1].texts) titles += describe(title) + "\n";
  world.expectEqual(titles, titlesOf(submenuTitled(world, is[0].text)));
}
void expectEmptySubmenu(World& world, const Arguments& is) {
  world.expectEqual("", titlesOf(submenuTitled(world, is[0].text)));
}

constexpr Pattern kMenuStage[] = {
    {"date TEXT", setDate},
    {"time zone TEXT", setTimeZone},
    {"language TEXT", setLanguage},
    {"menu titles TEXT and TEXT", setOpenAndQuit},
    {"shortcut NUMBER is TEXT", setShortcutOfAll},
    {"shortcut NUMBER in NUMBER is TEXT", setShortcutOfOne},
};

constexpr Pattern kMenu[] = {
    {"open menu", openMenu},
    {"choose TEXT", chooseItem},
    {"expect item TEXT NAME", expectItem},
    {"expect items NAME TEXTS", expectItems},
    {"expect PLACE items NAME", expectCount},
    {"expect item NUMBER titled TEXT", expectTitle},
    {"expect item TEXT shows TEXT with HEX", expectKey},
    {"expect submenu TEXT holds TEXTS", expectSubmenu},
    {"expect submenu TEXT empty", expectEmptySubmenu},
};

}  // namespace

std::span<const Pattern> menuStagePatterns() { return kMenuStage; }
std::span<const Pattern> menuPatterns() { return kMenu; }

}  // namespace quorvane::scenario
