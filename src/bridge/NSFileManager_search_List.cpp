#include <cstring>
#include <utility>

#include "src/base/Log.h"
#include "src/base/Text.h"
#include "src/bridge/BIM_str.h"
#include "src/bridge/NSFileManager_search.h"

namespace quorvane {
namespace {

constexpr std::size_t kFirstRoom = 512;

void putItem(const Handle& block, std::int32_t index, const FSRef& ref) {
  const auto at = static_cast<std::size_t>(index) * kFSRefSize;
  std::memcpy(block->content.data() + at, ref.hidden.data(), kFSRefSize);
}

}  // namespace

Handle Get_iterate_Handle(Instance& instance) {
  return instance.state<FileSearchState>().iterate_Handle;
}

Handle Take_iterate_Handle(Instance& instance) {
  Start_iterate_Count(instance);
  return std::exchange(instance.state<FileSearchState>().iterate_Handle, nullptr);
}

std::size_t countOfList(const Handle& list) { return GetHandleSize(list) / kFSRefSize; }

FSRef itemOfList(const Handle& list, std::size_t index) {
  FSRef ref;
  std::memcpy(ref.hidden.data(), list->content.data() + index * kFSRefSize, kFSRefSize);
  return ref;
}

void Set_iterate_Handle(Instance& instance) {
  auto& state = instance.state<FileSearchState>();
  if (state.iterate_Handle != nullptr) return;
  Set_New_iterate_Handle(instance, NewHandle(kFirstRoom * kFSRefSize));
  Start_iterate_Count(instance);
}

void Set_New_iterate_Handle(Instance& instance, const Handle& block) {
  instance.state<FileSearchState>().iterate_Handle = block;
}

void Start_iterate_Count(Instance& instance) {
  instance.state<FileSearchState>().iterate_COUNT = 0;
}

void do_Set_iterate_Handle(Instance& instance, const FSRef& ref) {
  Set_iterate_Handle(instance);
  auto& state = instance.state<FileSearchState>();
  const auto needed = static_cast<std::uint32_t>((state.iterate_COUNT + 1) * kFSRefSize);
  if (needed > Get_HandleSize(state.iterate_Handle)) {
    SetTheHandleSize(state.iterate_Handle, needed);
  }
  putItem(state.iterate_Handle, static_cast<std::int32_t>(state.iterate_COUNT++), ref);
}

void Reset_iterate_Handle(Instance& instance) {
  const auto& state = instance.state<FileSearchState>();
  if (state.iterate_Handle == nullptr) return;
  SetTheHandleSize(state.iterate_Handle,
                   static_cast<std::uint32_t>(state.iterate_COUNT * kFSRefSize));
  insertionSort(instance, state.iterate_Handle);
}

void Dispose_iterate_Handle(Instance& instance) {
  auto& state = instance.state<FileSearchState>();
  Disposblock(instance, std::exchange(state.iterate_Handle, nullptr));
  Start_iterate_Count(instance);
}

void insertionSort(Instance& instance, const Handle& block) {
  const auto count = static_cast<std::int32_t>(countOfList(block));
  for (std::int32_t i = 1; i < count; ++i) {
    const FSRef item = itemOfList(block, static_cast<std::size_t>(i));
    FileName name{};
    FSGetFileDirName_ToCString(instance, item, name);
    std::int32_t j = i - 1;
    const std::int32_t position = binarySearch(instance, block, name.data(), 0, j);
    for (; j >= position; --j)
      putItem(block, j + 1, itemOfList(block, static_cast<std::size_t>(j)));
    putItem(block, j + 1, item);
  }
}

std::int32_t binarySearch(Instance& instance, const Handle& block, const std::uint8_t* name,
                          std::int32_t low, std::int32_t high) {
  while (high > low) {
    const std::int32_t middle = (low + high) / 2;
    const std::int32_t order = BINCOMPARE(instance, block, name, middle);
    if (order == 0) return middle + 1;
    if (order < 0) high = middle - 1;
    if (order > 0) low = middle + 1;
  }
  return BINCOMPARE(instance, block, name, low) > 0 ? low + 1 : low;
}

std::int32_t BINCOMPARE(Instance& instance, const Handle& block, const std::uint8_t* name,
                        std::int32_t index) {
  FileName item{};
  FSGetFileDirName_ToCString(instance, itemOfList(block, static_cast<std::size_t>(index)), item);
  return STRCMPAR(name, item.data());
}

OSStatus FSGetFileDirName(Instance& instance, const FSRef& ref, std::u16string& out) {
  return instance.platform().fileManager.FSGetCatalogInfo(ref, 0, nullptr, &out, nullptr);
}

void FSGetFileDirName_ToCString(Instance& instance, const FSRef& ref, std::span<std::uint8_t> out) {
  std::u16string name;
  if (FSGetFileDirName(instance, ref, name) == noErr) UnicodeToCString(instance, name, out);
}

void UnicodeToCString(Instance& instance, std::u16string_view name, std::span<std::uint8_t> out) {
  instance.platform().textEncoding.CFStringGetCString(name, out);
}

void Print_path(Instance& instance, const FSRef& ref) {
  std::string path;
  if (instance.platform().fileManager.FSRefMakePath(ref, path) == noErr) Log(instance, path);
}

void NSLog_File_Dir_Name(Instance& instance, const FSRef& ref) {
  std::u16string name;
  if (FSGetFileDirName(instance, ref, name) == noErr) Log(instance, toUtf8(name));
}

}  // namespace quorvane
