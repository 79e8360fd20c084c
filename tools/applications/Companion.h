#pragma once
// The input method's companions: the server and the Pencil Menu. Each says that it runs, answers
// what comes to its port, and does nothing else.

#include <array>
#include <string_view>

#include "platform/MacTypes.h"

namespace quorvane::applications {

struct Companion {
  const char* word;  ///< as a person calls it
  const char* name;
  const char* package;  ///< its folder in SharedSupport
  FourCharCode signature;
  const char* bundleIdentifier;
  std::string_view port;  ///< empty: it serves none
};

inline constexpr std::array<Companion, 2> kCompanions{
    {{"server", "QuorvaneServer", "QuorvaneServer.app", "QVUI"_4cc, "", {}},
     {"pencil-menu", "Quorvane_menulet", "Quorvane_menulet.app", "QVKS"_4cc,
      "com.tallowmere.menulet", "Q7T2M4K9W1.com.tallowmere.QorvMenuletPortServer"}}};

/// Until it is asked to end, by a signal or by a message. Throws std::runtime_error where one runs
/// already or its port can't be had.
void runCompanion(const Companion& companion);

}  // namespace quorvane::applications
