#include "hosts/script/ScriptHeap.h"

#include <cstdlib>

#include "hosts/script/ScriptEntry.h"

namespace quorvane::script {
namespace {

void onFatalError(void* /*heap*/, const char* /*message*/) { leave(); }

}  // namespace

struct ScriptHeap::Run {
  ScriptHeap& heap;
  duk_safe_call_function step;
  void* data;
  bool finished = false;
};

ScriptHeap::ScriptHeap() {
  const auto make = [](void* data) {
    auto& heap = *static_cast<ScriptHeap*>(data);
    heap.context_ = duk_create_heap(allocate, reallocate, release, data, onFatalError);
  };
  if (!enter(make, this)) abandon();
}

ScriptHeap::~ScriptHeap() { abandon(); }

bool ScriptHeap::run(duk_safe_call_function step, void* data) {
  if (broken()) return false;
  Run call{*this, step, data};
  const auto work = [](void* started) {
    auto& run = *static_cast<Run*>(started);
    duk_context* const context = run.heap.context_;
    duk_set_top(context, 0);
    run.finished = duk_safe_call(context, run.step, run.data, 0, 1) == DUK_EXEC_SUCCESS;
  };
  // Time may be up just when the step has finished: what it left goes with the heap all the same.
  const bool whole = enter(work, &call);
  if (!whole) abandon();
  return whole && call.finished;
}

void* ScriptHeap::allocate(void* heap, duk_size_t size) {
  return static_cast<ScriptHeap*>(heap)->resize(nullptr, size);
}

void* ScriptHeap::reallocate(void* heap, void* memory, duk_size_t size) {
  return static_cast<ScriptHeap*>(heap)->resize(memory, size);
}

void ScriptHeap::release(void* heap, void* memory) {
  static_cast<ScriptHeap*>(heap)->resize(memory, 0);
}

/// All that Duktape asks for. What can't be had ends the script: Duktape would let it go on.
void* ScriptHeap::resize(void* memory, std::size_t size) {
  const Uninterrupted uninterrupted;
  Block* block = memory != nullptr ? static_cast<Block*>(memory) - 1 : nullptr;
  const std::size_t others = blocks_.size - (block != nullptr ? block->size : 0);
  if (size > kLimit - others) leave();
  if (block != nullptr) unlink(*block);
  if (size == 0) {
    std::free(block);
    return nullptr;
  }
  auto* const resized = static_cast<Block*>(std::realloc(block, sizeof(Block) + size));
  if (resized == nullptr) {
    if (block != nullptr) link(*block);
    leave();
  }
  resized->size = size;
  link(*resized);
  return resized + 1;
}

void ScriptHeap::link(Block& block) {
  block.previous = &blocks_;
  block.next = blocks_.next;
  block.next->previous = &block;
  blocks_.next = &block;
  blocks_.size += block.size;
}

void ScriptHeap::unlink(Block& block) {
  block.previous->next = block.next;
  block.next->previous = block.previous;
  blocks_.size -= block.size;
}

void ScriptHeap::abandon() {
  context_ = nullptr;
  while (blocks_.next != &blocks_) {
    Block* const block = blocks_.next;
    unlink(*block);
    std::free(block);
  }
}

}  // namespace quorvane::script
