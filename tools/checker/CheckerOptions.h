#pragma once

#include <cstdint>
#include <string>

namespace quorvane::checker {

/// How the stand-in keeps its side of the agreement. All but the first are for tests.
enum class Manner {
  Honest,
  Slow,    ///< thinks for `slowMilliseconds` about each new text
  Silent,  ///< never answers
  Stale,   ///< answers each scan as the one before should have been
  Hostile  ///< honest between fits of writing and sending anything
};

struct CheckerOptions {
  Manner manner = Manner::Honest;
  std::uint32_t slowMilliseconds = 0;
  std::uint32_t seed = 1;             ///< of the hostile manner
  bool traceScans = false;            ///< a log line for each scan, too
  bool showText = false;              ///< words in the log in clear
  std::uint32_t smartCharacters = 0;  ///< field 38: 1 quotes, 2 dashes, 4 capitals of sentences
  bool popup = false;           ///< a misspelt word opens the popup instead of being fixed at once
  bool controlDigits = false;   ///< field 25: the popup's digits need the control key
  bool documentWindow = false;  ///< a window stands beside the first text that is scanned
  std::string dictionary = "en_US";
};

}  // namespace quorvane::checker
