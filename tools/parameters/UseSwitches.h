#pragma once
// Switches of the application in front, by way of the parameter file of a memory host.

#include "hosts/memory/MemoryHost.h"
#include "src/menu/QBIM_IMK_Params.h"
#include "tools/parameters/ParameterFileInMemory.h"

namespace quorvane::parameters {

/// For an input method that starts, or that comes to know the application, only then.
inline void useSwitches(memory::MemoryHost& host, std::uint32_t word) {
  const memory::MemoryProcess* const front = host.processes.find(host.processes.front());
  if (front == nullptr) return;
  changeParameterFile(host.files, [&](auto& file) {
    setSwitches(file, {front->signature, front->bundleIdentifier}, word);
  });
}

/// For one that runs: it sees nothing in front for a moment.
inline void useSwitches(memory::MemoryHost& host, Instance& instance, std::uint32_t word) {
  useSwitches(host, word);
  const ProcessSerialNumber front = host.processes.front();
  host.processes.setFront({}, memory::Notice::Missed);
  GetAndSetMenuParams3(instance);
  host.processes.setFront(front, memory::Notice::Missed);
  GetAndSetMenuParams3(instance);
}

}  // namespace quorvane::parameters
