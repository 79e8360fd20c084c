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
std::uint8_t* usable(Instance& instance, void* block, std::size_t size) {
  if (block == nullptr || block == kShmFailed) return nullptr;
  SharedMemory& memory = instance.platform().sharedMemory;
  if (memory.attachedSize(block) >= size) return static_cast<std::uint8_t*>(block);
  memory.shmdt(block);
  return nullptr;
}

void logShmgetError(Instance& instance, int id) {
  const int error = instance.platform().sharedMemory.lastError();
  if (error == kNoSuchSegment) {
    Log(instance, "shmget failed: IPC_CREAT was not set and segment doesn't already exist.");
  } else if (error == kPermissionDenied) {
    Log(instance, "shmget failed: key already in use permission denied");
  } else {
    Log(instance, "shmget failed: ??? ");
  }
  Log(instance, "shmget result: ", id);
}

}  // namespace

void* GetSharedMemoryBlock(Instance& instance, std::uint32_t key) {
  if (IsQUORVANEAPPRUNNING(instance) == 0 || key == 0) return nullptr;
  SharedMemory& memory = instance.platform().sharedMemory;
  const std::size_t size = sizeOf(key);
  int id = memory.shmget(key, size, kPermissions);
  if (id == -1) id = memory.shmget(key, size, 0);
  // Only null counts as failure here: the -1 of a failing attach goes back as it is.
  void* address = id == -1 ? nullptr : memory.shmat(id, nullptr, kPermissions);
  if (address == nullptr) Log(instance, "*-*-* Shared Mem Err - ", key);
  return address;
}

std::uint8_t* AttachSegment(Instance& instance, std::uint32_t key, std::size_t size) {
  return usable(instance, GetSharedMemoryBlock(instance, key), size);
}

std::uint8_t* GetToolCRecPtr(Instance& instance) {
  auto& state = instance.state<SharedMemoryState>();
  if (state.OPENGlobalToolCRecPtr == nullptr) {
    state.OPENGlobalToolCRecPtr = AttachSegment(instance, kToolCRecKey, kToolCRecSize);
  }
  if (state.OPENGlobalToolCRecPtr != state.GlobalToolCRecPtr) {
    set_SETMENUFLAG(instance, 1);
    state.GlobalToolCRecPtr = state.OPENGlobalToolCRecPtr;
  }
  return state.OPENGlobalToolCRecPtr;
}

void CloseToolRecPtr(Instance& instance, void* address) {
  auto& state = instance.state<SharedMemoryState>();
  if (address == nullptr || state.OPENGlobalToolCRecPtr != nullptr) return;
  instance.platform().sharedMemory.shmdt(address);
  state.OPENGlobalToolCRecPtr = nullptr;
}

void MasterCloseToolRecPtr(Instance& instance) {
  auto& state = instance.state<SharedMemoryState>();
  if (state.OPENGlobalToolCRecPtr == nullptr) return;
  instance.platform().sharedMemory.shmdt(state.OPENGlobalToolCRecPtr);
  state.OPENGlobalToolCRecPtr = nullptr;
}

void DelegateCloseToolRecPtr(Instance& instance) { MasterCloseToolRecPtr(instance); }

// The record is opened by its first user.
void MasterOpenToolRecPtr(Instance& /*process*/) {}

void DelegateOpenToolRecPtr(Instance& instance) {
  Log(instance, "** DelegateOpenToolRecPtr");
  MasterOpenToolRecPtr(instance);
}

void Wait_Install_DelegateOpenToolRecPtr(Instance& /*process*/) {}

std::int32_t ISOPENTOOLREC(Instance& instance) {
  if (Get_OPENGlobalToolCRecPtr(instance) != nullptr && IsQUORVANEAPPRUNNING(instance) == 0) {
    MasterCloseToolRecPtr(instance);
  }
  return 0;
}

std::uint8_t* Get_OPENGlobalToolCRecPtr(Instance& instance) {
  return instance.state<SharedMemoryState>().OPENGlobalToolCRecPtr;
}

std::uint8_t* GetInteractiveTextRecordPtr(Instance& instance) {
  return AttachSegment(instance, kInteractiveTextKey, kInteractiveTextSize);
}

void CloseInteractiveTextRecordPtr(Instance& instance, const void* address) {
  instance.platform().sharedMemory.shmdt(address);
}

AEToolEventSelectStruct* GetAEToolEventSelectRecordPtr(Instance& instance) {
  std::uint8_t* block = AttachSegment(instance, kToolEventKey, sizeof(AEToolEventSelectStruct));
  if (block == nullptr) Log(instance, "******** NO QUORVANEAPPCOM");
  auto* record = reinterpret_cast<AEToolEventSelectStruct*>(block);
  instance.state<SharedMemoryState>().Global_ToolComRecPtr = record;
  return record;
}

AEToolEventSelectStruct* Get_ToolCRecPtAEToolEventRecordPtr(Instance& instance) {
  return GetAEToolEventSelectRecordPtr(instance);
}

void CloseAEToolEventSelectRecordPtr(Instance& instance, const void* /*ignored*/) {
  const auto* record = instance.state<SharedMemoryState>().Global_ToolComRecPtr;
  if (record != nullptr) instance.platform().sharedMemory.shmdt(record);
}

std::uint8_t* GetAEToolMenuSelectRecordPtr(Instance& instance) {
  std::uint8_t* record = AttachSegment(instance, kMenuBufferKey, kMenuBufferSize);
  if (record == nullptr) Log(instance, "******** NO QUORVANE_COMMUNICATE_APPMENUBUF");
  instance.state<SharedMemoryState>().Global_MenuComRecPtr = record;
  return record;
}

void CloseAEToolMenuSelectRecordPtr(Instance& instance, const void* /*ignored*/) {
  const auto* record = instance.state<SharedMemoryState>().Global_MenuComRecPtr;
  if (record != nullptr) instance.platform().sharedMemory.shmdt(record);
}

void* GETSAFEMEMBLOCK(Instance& instance, std::uint32_t key, std::size_t size, std::uint32_t slot) {
  auto& shmid = instance.state<SharedMemoryState>().shmid;
  if (slot >= shmid.size()) return nullptr;
  SharedMemory& memory = instance.platform().sharedMemory;
  Log(instance, "**********************************************");
  Log(instance, "SYS V -  shmem key: ", key, "  -  ", size, " bytes");
  int& id = shmid[slot];
  id = memory.shmget(key, size, kIpcCreate | kPermissions);
  if (id == -1) id = memory.shmget(key, size, 0);
  if (id < 0) {
    logShmgetError(instance, id);
    return nullptr;
  }
  Log(instance, "shmget result: ", id, " ");
  void* block = memory.shmat(id, nullptr, kPermissions);
  // Nothing at all of what isn't attached: neither null nor the -1 of a failure is touched.
  CLRBLOCK(block, static_cast<std::int32_t>(std::min(size, memory.attachedSize(block))));
  return block;
}

std::int32_t delete_segment(Instance& instance, int id) {
  return instance.platform().sharedMemory.shmctl(id, kIpcRemove);
}

std::uint32_t is_SETMENUFLAG(Instance& instance) {
  return instance.state<SharedMemoryState>().SETMENUFLAG;
}

void set_SETMENUFLAG(Instance& instance, std::uint32_t value) {
  instance.state<SharedMemoryState>().SETMENUFLAG = value;
}

}  // namespace quorvane
