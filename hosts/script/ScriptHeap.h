#pragma once
// A Duktape heap that can be left at any moment and thrown away.

#include <duktape.h>

#include <cstddef>

namespace quorvane::script {

class ScriptHeap {
 public:
  /// In bytes.
  static constexpr std::size_t kLimit = std::size_t{16} << 20;

  ScriptHeap();
  /// Frees every block, without a word to Duktape: no script has anything to finish.
  ~ScriptHeap();
  ScriptHeap(const ScriptHeap&) = delete;
  ScriptHeap& operator=(const ScriptHeap&) = delete;

  /// Left before its end at least once, or never made.
  [[nodiscard]] bool broken() const { return context_ == nullptr; }
  /// Runs `step` protected, on an empty stack, where its one result stays until the next run. False
  /// where it threw, or was left and the heap is broken now, or was before. `step` owns nothing
  /// that is to be destroyed.
  bool run(duk_safe_call_function step, void* data);

 private:
  /// Stands before each block. All are in one ring.
  struct alignas(std::max_align_t) Block {
    Block* previous;
    Block* next;
    std::size_t size;
  };
  struct Run;

  static void* allocate(void* heap, duk_size_t size);
  static void* reallocate(void* heap, void* memory, duk_size_t size);
  static void release(void* heap, void* memory);
  void* resize(void* memory, std::size_t size);
  void link(Block& block);
  void unlink(Block& block);
  void abandon();

  Block blocks_{&blocks_, &blocks_, 0};  ///< size: of all together
  duk_context* context_ = nullptr;
};

}  // namespace quorvane::script
