#include <cstring>
#include <new>

#include "src/bridge/BIM_str.h"

namespace quorvane {
namespace {

constexpr FourCharCode kStringList = "QSTR"_4cc;

Handle newHandle(const std::uint8_t* bytes, std::size_t count) {
  try {
    auto handle = std::make_shared<HandleRecord>();
    handle->content.assign(bytes, bytes + count);
    return handle;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

// The `index`-th Pascal string of a list; null where it doesn't lie wholly inside.
const std::uint8_t* stringInList(const std::vector<std::uint8_t>& list, std::int32_t index) {
  std::uint16_t count = 0;  // host order
  if (list.size() < sizeof(count)) return nullptr;
  std::memcpy(&count, list.data(), sizeof(count));
  if (index > count) return nullptr;
  std::size_t at = sizeof(count);
  for (std::int32_t i = 1; i < index && at < list.size(); ++i) at += std::size_t{list[at]} + 1;
  return at < list.size() && list[at] < list.size() - at ? list.data() + at : nullptr;
}

}  // namespace

void* MVEBLOCK_APPLE(void* dst, const void* src, std::uint32_t n) {
  return std::memmove(dst, src, n);
}

void* Mem_Copy(void* dst, const void* src, std::uint32_t n) { return MVEBLOCK_APPLE(dst, src, n); }

void CLRBLOCK(void* block, std::int32_t n) {
  if (n > 0) std::memset(block, 0, static_cast<std::size_t>(n));
}

std::int32_t CMPBLOCK(const void* a, const void* b, std::uint32_t n) {
  const int difference = std::memcmp(a, b, n);
  return difference == 0 ? 0 : difference < 0 ? -1 : 1;
}

std::uint32_t Get_HandleSize(const Handle& h) {
  return h ? static_cast<std::uint32_t>(h->content.size()) : 0;
}

void SetTheHandleSize(const Handle& h, std::uint32_t n) {
  if (h) h->content.resize(n);
}

Handle CopyHandleToNewHandle(const Handle& h) {
  if (!h || !h->hasContent) return nullptr;
  return newHandle(h->content.data(), h->content.size());
}

Handle CopyPtrToNewHandle(const void* ptr, std::uint32_t n) {
  return newHandle(static_cast<const std::uint8_t*>(ptr), n);
}

void Disposblock(Instance& instance, const Handle& h) {
  if (!h || !h->hasContent) return;
  h->locked = false;
  if (h->isResource) instance.platform().resourceManager.DetachResource(h);
  h->content = {};
  h->hasContent = false;
}

std::optional<Str255> Get1IndString(Instance& instance, std::int16_t id, std::int32_t index) {
  const Handle list = instance.platform().resourceManager.Get1Resource(kStringList, id);
  if (!list || !list->hasContent) return std::nullopt;
  const std::uint8_t* found = stringInList(list->content, index);
  if (found == nullptr) return std::nullopt;
  Str255 result{};
  Pstrcpy(result.data(), found);
  return result;
}

std::uint32_t RDPSTRG(Instance& instance, std::uint8_t* dst, std::int16_t id, std::int32_t index) {
  dst[0] = 0;
  if (const auto found = Get1IndString(instance, id, index)) Pstrcpy(dst, found->data());
  return dst[0];
}

std::uint32_t RDCSTRG(Instance& instance, std::uint8_t* dst, std::int16_t id, std::int32_t index) {
  dst[0] = 0;
  const auto found = Get1IndString(instance, id, index);
  if (!found) return 0;
  PtoCstrCpy(dst, found->data());
  return (*found)[0];
}

}  // namespace quorvane
