#pragma once
// Whether a process still runs. One that has ended but wasn't waited for doesn't.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

#include "hosts/desktop/Descriptor.h"

namespace quorvane::desktop {

/// A descriptor that becomes readable when the process ends. Invalid where no such process of this
/// user runs.
Descriptor openProcess(std::int32_t pid);

/// The same of a child of ours that may have ended already.
Descriptor openChild(std::int32_t pid);

/// False where it has ended and been waited for.
bool signalProcess(const Descriptor& process, int number);

/// When a process began, in clock ticks since the system did: with the process id it tells a
/// process from every other. None where there is no such process.
std::optional<std::uint64_t> beginningOf(std::int32_t pid);
/// The same clock, now.
std::uint64_t ticksSinceBoot();
std::uint64_t ticksOf(std::chrono::seconds duration);

/// False where the process began after `file` was last written, or either isn't there: a file that
/// says something of a process is then a leftover of another one with its id.
bool beganBefore(std::int32_t pid, const std::filesystem::path& file);

/// Asks each to end, insists after `patience`, and waits until they have. False where one goes on
/// for two seconds more.
bool endProcesses(std::span<const Descriptor> processes, std::chrono::milliseconds patience);

inline bool isRunning(std::int32_t pid) { return openProcess(pid).valid(); }

}  // namespace quorvane::desktop
