// The key path takes no memory from the heap.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

#include "src/session/QBIM_IMK_TextBuffer.h"
#include "tests/support/StartedInputMethod.h"

namespace {

std::uint64_t allocations = 0;

void* counted(std::size_t size) {
  ++allocations;
  return std::malloc(size == 0 ? 1 : size);
}

}  // namespace

void* operator new(std::size_t size) {
  if (void* const block = counted(size)) return block;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return counted(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return counted(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }

namespace quorvane {
namespace {

template <class Action>
std::uint64_t allocationsOf(const Action& action) {
  const std::uint64_t before = allocations;
  action();
  return allocations - before;
}

/// Ready to count: the journal off, no log line kept.
struct QuietInputMethod : test::StartedInputMethod {
  explicit QuietInputMethod(bool withMainApplication) : StartedInputMethod(withMainApplication) {
    type("Warm up. ");
    host.clock.advanceTicks(1);
    host.runPending();
    host.clock.step = 1000;  // no timer falls due, for which the host would allocate
    host.journal.setRecording(false);
    host.log.limit = 0;
  }
};

TEST(Allocation, TheCounterCounts) {
  EXPECT_GE(
      allocationsOf([] { std::vector<int>(100).swap(*std::make_unique<std::vector<int>>()); }), 2u);
}

TEST(Allocation, BIMHandleInputTakesNoneWhateverTheKey) {
  QuietInputMethod method(true);
  BIMSessionRec* session = BIMGetActiveSession(method.instance);
  for (const bool logging : {false, true}) {
    method.host.log.enabled = logging;
    const std::uint64_t answered = method.host.mainApplication.answered();
    for (std::uint32_t round = 0; round < 8; ++round) {
      for (std::uint32_t key = 0; key < 256; ++key) {
        const auto byte = static_cast<std::uint8_t>(key);
        EXPECT_EQ(allocationsOf([&] { BIMHandleInput(method.instance, session, byte); }), 0u)
            << "key byte " << key;
      }
    }
    EXPECT_GT(method.host.mainApplication.answered(), answered + 500) << "scans";
  }
}

TEST(Allocation, AKeyTakesNoneWithoutTheMainApplication) {
  QuietInputMethod method(false);
  for (const bool logging : {false, true}) {
    method.host.log.enabled = logging;
    for (const char16_t character : std::u16string_view(u"a .\r\b\x1b\x1c\x1e\x7f\xe9\x201c")) {
      for (const NSEventType type : {NSEventType::KeyDown, NSEventType::KeyUp}) {
        CarbonEvent record{
            kEventClassKeyboard, kEventRawKeyDown, Seconds(9), std::uint8_t{0}, 0U, 0U, {}};
        if (type == NSEventType::KeyUp) record.kind = kEventRawKeyUp;
        const NSEvent event{type, 0, 0, {character}, &record};
        EXPECT_EQ(allocationsOf([&] { method.controller.handleEvent(event, &method.client); }), 0u)
            << "character " << static_cast<std::uint32_t>(character);
      }
    }
  }
}

}  // namespace
}  // namespace quorvane
