#include "src/bridge/qorv_sharedmem.h"

#include <algorithm>

#include "src/base/Log.h"
#include "src/bridge/BIM_str.h"
#include "src/bridge/Presence.h"

namespace quorvane {
namespace {

constexpr int kPermissions = 0666;

constexpr int kNoSuchSegment = 2;      // ENOENT
constexpr int kPermissionDenied = 13;  // EACCES

std::size_t sizeOf(std::uint32_t key) {
  const auto* found = std::ranges::find(kSharedSegments, key, &SharedSegment::key);
  return found == kSharedSegments.end() ? 0 : found->size;
}

// The block where it holds `size` bytes, else null. A block that is too small is detached again.
std::uint8_t* usable(Process& process, void* block, std::size_t size) {
  if (block == nullptr || block == kShmFailed) return nullptr;
  SharedMemory& memory = process.platform().sharedMemory;
  if (memory.attachedSize(block) >= size) return static_cast<std::uint8_t*>(block);
  memory.shmdt(block);
  return nullptr;
}

std::uint8_t* attach(Process& process, std::uint32_t key, std::size_t size) {
  return usable(process, GetSharedMemoryBlock(process, key), size);
}

void logShmgetError(Process& process, int id) {
  const int error = process.platform().sharedMemory.lastError();
  if (error == kNoSuchSegment) {
    Log(process, "shmget failed: IPC_CREAT was not set and segment doesn't already exist.");
  } else if (error == kPermissionDenied) {
    Log(process, "shmget failed: key already in use permission denied");
  } else {
    Log(process, "shmget failed: ??? ");
  }
  Log(process, "shmget result: ", id);
}

}  // namespace

void* GetSharedMemoryBlock(Process& process, std::uint32_t key) {
  if (IsQUORVANEAPPRUNNING(process) == 0 || key == 0) return nullptr;
  SharedMemory& memory = process.platform().sharedMemory;
  const std::size_t size = sizeOf(key);
  int id = memory.shmget(key, size, kPermissions);
  if (id == -1) id = memory.shmget(key, size, 0);
  // Only null counts as failure here: the -1 of a failing attach goes back as it is.
  void* address = id == -1 ? nullptr : memory.shmat(id, nullptr, kPermissions);
  if (address == nullptr) Log(process, "*-*-* Shared Mem Err - ", key);
  return address;
}

std::uint8_t* GetToolCRecPtr(Process& process) {
  auto& state = process.state<SharedMemoryState>();
  if (state.OPENGlobalToolCRecPtr == nullptr) {
    state.OPENGlobalToolCRecPtr = attach(process, kToolCRecKey, kToolCRecSize);
  }
  if (state.OPENGlobalToolCRecPtr != state.GlobalToolCRecPtr) {
    set_SETMENUFLAG(process, 1);
    state.GlobalToolCRecPtr = state.OPENGlobalToolCRecPtr;
  }
  return state.OPENGlobalToolCRecPtr;
}

void CloseToolRecPtr(Process& process, void* address) {
  auto& state = process.state<SharedMemoryState>();
  if (address == nullptr || state.OPENGlobalToolCRecPtr != nullptr) return;
  process.platform().sharedMemory.shmdt(address);
  state.OPENGlobalToolCRecPtr = nullptr;
}

void MasterCloseToolRecPtr(Process& process) {
  auto& state = process.state<SharedMemoryState>();
  if (state.OPENGlobalToolCRecPtr == nullptr) return;
  process.platform().sharedMemory.shmdt(state.OPENGlobalToolCRecPtr);
  state.OPENGlobalToolCRecPtr = nullptr;
}

void DelegateCloseToolRecPtr(Process& process) { MasterCloseToolRecPtr(process); }

// The record is opened by its first user.
void MasterOpenToolRecPtr(Process& /*process*/) {}

void DelegateOpenToolRecPtr(Process& process) {
  Log(process, "** DelegateOpenToolRecPtr");
  MasterOpenToolRecPtr(process);
}

void Wait_Install_DelegateOpenToolRecPtr(Process& /*process*/) {}

std::int32_t ISOPENTOOLREC(Process& process) {
  if (Get_OPENGlobalToolCRecPtr(process) != nullptr && IsQUORVANEAPPRUNNING(process) == 0) {
    MasterCloseToolRecPtr(process);
  }
  return 0;
}

std::uint8_t* Get_OPENGlobalToolCRecPtr(Process& process) {
  return process.state<SharedMemoryState>().OPENGlobalToolCRecPtr;
}

std::uint8_t* GetInteractiveTextRecordPtr(Process& process) {
  return attach(process, kInteractiveTextKey, kInteractiveTextSize);
}

void CloseInteractiveTextRecordPtr(Process& process, const void* address) {
  process.platform().sharedMemory.shmdt(address);
}

AEToolEventSelectStruct* GetAEToolEventSelectRecordPtr(Process& process) {
  std::uint8_t* block = attach(process, kToolEventKey, sizeof(AEToolEventSelectStruct));
  if (block == nullptr) Log(process, "******** NO QUORVANEAPPCOM");
  auto* record = reinterpret_cast<AEToolEventSelectStruct*>(block);
  process.state<SharedMemoryState>().Global_ToolComRecPtr = record;
  return record;
}

AEToolEventSelectStruct* Get_ToolCRecPtAEToolEventRecordPtr(Process& process) {
  return GetAEToolEventSelectRecordPtr(process);
}

void CloseAEToolEventSelectRecordPtr(Process& process, const void* /*ignored*/) {
  const auto* record = process.state<SharedMemoryState>().Global_ToolComRecPtr;
  if (record != nullptr) process.platform().sharedMemory.shmdt(record);
}

std::uint8_t* GetAEToolMenuSelectRecordPtr(Process& process) {
  std::uint8_t* record = attach(process, kMenuBufferKey, kMenuBufferSize);
  if (record == nullptr) Log(process, "******** NO QUORVANE_COMMUNICATE_APPMENUBUF");
  process.state<SharedMemoryState>().Global_MenuComRecPtr = record;
  return record;
}

void CloseAEToolMenuSelectRecordPtr(Process& process, const void* /*ignored*/) {
  const auto* record = process.state<SharedMemoryState>().Global_MenuComRecPtr;
  if (record != nullptr) process.platform().sharedMemory.shmdt(record);
}

void* GETSAFEMEMBLOCK(Process& process, std::uint32_t key, std::size_t size, std::uint32_t slot) {
  auto& shmid = process.state<SharedMemoryState>().shmid;
  if (slot >= shmid.size()) return nullptr;
  SharedMemory& memory = process.platform().sharedMemory;
  Log(process, "**********************************************");
  Log(process, "SYS V -  shmem key: ", key, "  -  ", size, " bytes");
  int& id = shmid[slot];
  id = memory.shmget(key, size, kIpcCreate | kPermissions);
  if (id == -1) id = memory.shmget(key, size, 0);
  if (id < 0) {
    logShmgetError(process, id);
    return nullptr;
  }
  Log(process, "shmget result: ", id, " ");
  void* block = memory.shmat(id, nullptr, kPermissions);
  // Nothing at all of what isn't attached: neither null nor the -1 of a failure is touched.
  CLRBLOCK(block, static_cast<std::int32_t>(std::min(size, memory.attachedSize(block))));
  return block;
}

std::int32_t delete_segment(Process& process, int id) {
  return process.platform().sharedMemory.shmctl(id, kIpcRemove);
}

std::uint32_t is_SETMENUFLAG(Process& process) {
  return process.state<SharedMemoryState>().SETMENUFLAG;
}

void set_SETMENUFLAG(Process& process, std::uint32_t value) {
  process.state<SharedMemoryState>().SETMENUFLAG = value;
}

}  // namespace quorvane
