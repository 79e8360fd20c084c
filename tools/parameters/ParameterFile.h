#pragma once
// The parameter file as the main application reads and writes it, whose half of it this is: see
// docs/wire-formats.md. What isn't touched stays as it is.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "hosts/resources/AppleDouble.h"
#include "hosts/resources/ResourceFork.h"
#include "src/menu/ParamsLayout.h"

namespace quorvane::parameters {

using resources::ResourceFork;

/// Its place in the application support folder.
inline constexpr std::string_view kFolder = "Quorvane";
inline constexpr std::string_view kFile = "Quorvane Parameters";
/// What it is known by.
inline constexpr resources::FinderInfo kFinderInfo{"PREF"_4cc, "QVKT"_4cc};

using quorvane::kNoSignature;

// --- Switches ------------------------------------------------------------------------------------

struct KnownApplication {
  FourCharCode signature = kNoSignature;
  std::string bundleIdentifier;
};
struct Switches {
  KnownApplication application;
  std::uint32_t word = 0;
};

/// A word of switches for one application, known by its signature or, without one, by its bundle
/// identifier. A new one takes a free record, where there is one.
void setSwitches(ResourceFork& file, const KnownApplication& application, std::uint32_t word);
/// In the order of the file, without what is free.
std::vector<Switches> switchesIn(const ResourceFork& file);
/// Those that count for it. None: those of an application that isn't known.
std::optional<Switches> switchesOf(const ResourceFork& file, const KnownApplication& application);
/// False: there are none under this signature or identifier.
bool forgetSwitches(ResourceFork& file, const KnownApplication& application);

// --- Shortcuts -----------------------------------------------------------------------------------

struct KeyShortcut {
  FourCharCode command = 0;
  std::uint32_t modifiers = 0;  ///< classic mask
  std::int16_t key = -1;        ///< virtual key code; -1: none
};
using Shortcuts = std::vector<KeyShortcut>;

/// An application's own: the others don't count there.
struct ApplicationShortcuts {
  FourCharCode signature = 0;
  Shortcuts shortcuts{};
};

/// Of every application that has none of its own.
Shortcuts shortcutsIn(const ResourceFork& file);
std::vector<ApplicationShortcuts> applicationShortcutsIn(const ResourceFork& file);
/// One for each command.
void setShortcut(ResourceFork& file, const KeyShortcut& shortcut);
void setShortcut(ResourceFork& file, FourCharCode signature, const KeyShortcut& shortcut);
/// An application's own. False: it has none.
bool forgetShortcuts(ResourceFork& file, FourCharCode signature);

// --- Flags ---------------------------------------------------------------------------------------

/// A byte of a resource.
struct Flag {
  std::string_view name;
  FourCharCode type;
  std::size_t index;
};
inline constexpr Flag kWithSpace{"completion.space", kAutoCompleteFlags, 0};
inline constexpr Flag kVertical{"completion.vertical", kAutoCompleteFlags, 1};
inline constexpr Flag kShiftToggle{"completion.shift-toggle", kAutoCompleteFlags, 2};
inline constexpr Flag kPencilMenu{"pencil", kPencilMenuFlag, 0};
/// Written by the input method alone.
inline constexpr Flag kMenuActivated{"menu-activated", kMenuActivationFlag, 0};

/// None: the file doesn't say.
std::optional<bool> flagIn(const ResourceFork& file, const Flag& flag);
void setFlag(ResourceFork& file, const Flag& flag, bool on);

struct CompletionFlags {
  bool withSpace = false;    ///< a completed word brings a space along
  bool vertical = false;     ///< the candidates panel is a column
  bool shiftToggle = false;  ///< a tap of Shift turns completion off and on
  bool operator==(const CompletionFlags&) const = default;
};
void setCompletionFlags(ResourceFork& file, CompletionFlags flags);

}  // namespace quorvane::parameters
