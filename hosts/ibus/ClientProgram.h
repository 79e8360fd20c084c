#pragma once
// Which program a text field belongs to, as far as that can be known.

#include <cstdint>
#include <string>
#include <string_view>

namespace quorvane::ibus {

struct ClientProgram {
  std::string name;      ///< 1 to 63 printable ASCII characters
  std::int32_t pid = 0;  ///< 0: unknown
  bool operator==(const ClientProgram&) const = default;
};

/// By what the client calls itself: "gtk3-im:mousepad" is mousepad, "gtk4-im:(4711)" the program of
/// that process; anything else is a program of that name.
ClientProgram programOf(std::string_view client);

/// Its text fields hold what other programs print: prompts can't be told from text.
bool isTerminal(std::string_view program);

/// A process of this user that goes by that name; 0: none.
std::int32_t processNamed(std::string_view program);

}  // namespace quorvane::ibus
