#pragma once
// Process Manager: processes by serial number.

#include "platform/MacTypes.h"

namespace quorvane {

inline constexpr std::uint32_t modeOnlyBackground = 0x400;

struct ProcessInfoRec {
  std::uint32_t processInfoLength = 72;
  std::uint8_t* processName = nullptr;  ///< null, or 256 bytes that take a Pascal string
  ProcessSerialNumber processNumber;
  FourCharCode processType = 0;
  FourCharCode processSignature = 0;
  std::uint32_t processMode = 0;
};

/// Every operation that fails returns a nonzero status and leaves its out argument as it was.
class ProcessManager {
 public:
  virtual ~ProcessManager() = default;

  virtual OSStatus GetCurrentProcess(ProcessSerialNumber& psn) = 0;
  virtual OSStatus GetFrontProcess(ProcessSerialNumber& psn) = 0;
  /// Steps `psn` to the process behind it; from {0, 0} to the first. procNotFound at the end, with
  /// `psn` back at {0, 0}.
  virtual OSStatus GetNextProcess(ProcessSerialNumber& psn) = 0;
  virtual OSStatus GetProcessInformation(const ProcessSerialNumber& psn, ProcessInfoRec& info) = 0;
  virtual OSStatus GetProcessForPID(std::int32_t pid, ProcessSerialNumber& psn) = 0;
  virtual OSStatus GetProcessPID(const ProcessSerialNumber& psn, std::int32_t& pid) = 0;
  virtual OSStatus WakeUpProcess(const ProcessSerialNumber& psn) = 0;
  virtual OSStatus SetFrontProcess(const ProcessSerialNumber& psn) = 0;
};

}  // namespace quorvane
