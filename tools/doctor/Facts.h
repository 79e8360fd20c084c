#pragma once
// What the links of the chain from a key to its correction look like. Gathered once; nothing of
// what was typed, no name of a document.

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "hosts/desktop/StatusFile.h"

namespace quorvane::doctor {

using Variables = std::map<std::string, std::string>;

/// What a program's surroundings say that decides whether its keys come to IBus.
inline constexpr std::array<const char*, 8> kVariables{
    "GTK_IM_MODULE", "QT_IM_MODULE",     "XMODIFIERS",          "IBUS_ENABLE_SYNC_MODE",
    "IBUS_ADDRESS",  "XDG_SESSION_TYPE", "XDG_CURRENT_DESKTOP", "IBUS_COMPONENT_PATH"};

/// IBus's description of the engine, in the folders where it looks.
struct Component {
  std::string file;  ///< empty: in none of them
  std::string program;
  bool programRuns = false;
};

struct Daemon {
  std::int32_t process = 0;  ///< 0: none
  bool answers = false;
  bool knowsEngine = false;
  std::string engine;   ///< the one that is selected
  std::string address;  ///< isn't shown
};

struct Segment {
  std::uint32_t key = 0;
  std::uint64_t size = 0;
  std::uint64_t wanted = 0;  ///< size that it should have
  std::uint32_t owner = 0;
};

struct Facts {
  Component component;
  Daemon daemon;
  std::optional<bool> inIBusList;  ///< none: there are no such settings
  std::optional<bool> inGnomeList;
  Variables shell;
  std::optional<Variables> session;  ///< none: there is no daemon to ask
  std::vector<std::int32_t> servers;
  desktop::FieldKind field = desktop::FieldKind::None;  ///< that has the focus
  std::string client;                                   ///< the program whose field it is
  std::int32_t mainApplication = 0;
  std::string launchFault;  ///< why the main application can't be started; empty: it can
  std::vector<Segment> segments;
  std::uint32_t user = 0;
  std::vector<std::string> missingData;
  bool hasDictionary = false;
  std::string layout;
  bool hasLayout = false;
};

}  // namespace quorvane::doctor
