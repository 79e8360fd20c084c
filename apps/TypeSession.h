#pragma once
// One run of `type`: the characters, key by key, into the document of a running system.

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "apps/RunningSystem.h"
#include "apps/TypeOptions.h"
#include "apps/TypeTrace.h"
#include "tools/support/Times.h"

namespace quorvane {

class TypeSession {
 public:
  /// Throws what a running system throws.
  explicit TypeSession(const TypeOptions& options);
  TypeSession(const TypeSession&) = delete;
  TypeSession& operator=(const TypeSession&) = delete;

  /// The document is complete when it returns.
  void run(std::u32string_view text);
  [[nodiscard]] const std::u16string& document() { return system_.document().text(); }
  /// Of white space keys, each from its press until it has gone to the document: the answer of the
  /// main application lies in between.
  [[nodiscard]] const Times& wordEnds() const { return wordEnds_; }
  /// `told` comes before the end of the process that a message has asked for.
  void onQuit(std::function<void()> told) { system_.beforeExit = std::move(told); }
  /// The signal that asked for an early end; 0: none.
  [[nodiscard]] int signal() const { return system_.signal(); }

 private:
  void observe();
  void typeAll(std::u32string_view text);
  void typeOne(char32_t character);
  void pause();
  void awaitLastFixes();

  std::chrono::milliseconds delay_;
  TypeTrace trace_;
  RunningSystem system_;
  std::uint64_t packets_ = 0;  ///< received so far
  Times wordEnds_;
};

}  // namespace quorvane
