#pragma once

#include <chrono>
#include <cstdint>

namespace quorvane {

struct TypeOptions {
  std::uint32_t switches = 0x11833;    ///< CURRENTAPPFLAGSTATUS
  std::chrono::milliseconds delay{0};  ///< behind each key, spent in the run loop
  bool checker = true;                 ///< the stand-in runs beside us
  bool trace = false;
  bool log = false;
  bool showPrivate = false;  ///< typed text in log lines
};

}  // namespace quorvane
