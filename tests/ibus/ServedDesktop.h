#pragma once
// A test desktop whose engine is the input method itself.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <optional>

#include "tests/support/desktop/Applications.h"

namespace quorvane::tests {

inline constexpr const char* kTyped = "I recieve teh letter, it doesn't matter. ";
inline constexpr const char* kCorrected = "I receive the letter, it doesn't matter. ";

#if !defined(NDEBUG) || defined(__SANITIZE_ADDRESS__)
inline constexpr bool kAnswersInTime = false;
#else
inline constexpr bool kAnswersInTime = true;
#endif
inline constexpr const char* kTooSlow = "only a release build answers while a client's key waits";

/// A number that the environment gives, for long runs.
inline int numberOr(const char* variable, int usual) {
  const char* const given = std::getenv(variable);
  return given != nullptr ? std::atoi(given) : usual;
}

class ServedDesktop : public testing::Test {
 protected:
  static constexpr std::string_view kMainApplication = "QVPX";
  static constexpr std::string_view kServer = "QVUI";
  static constexpr std::string_view kInputMethod = "????";

  /// Of the shared segments; nobody else's.
  static std::uint32_t keyOffset() {
    return 0x20000000U + static_cast<std::uint32_t>(::getpid()) * 32U;
  }
  void SetUp() override {
    if (!kAnswersInTime) GTEST_SKIP() << kTooSlow;
    if (const std::string why = HeadlessDesktop::missing(); !why.empty()) GTEST_SKIP() << why;
  }
  void TearDown() override { end(); }

  /// Ready for keys.
  void start(bool sync = true,
             const std::string& engine = QUORVANE_PROGRAM " server --ibus --log --show-private") {
    end();
    desktop_.emplace(
        DesktopOptions{.engine = engine,
                       .sync = sync,
                       .variables = {"XDG_CACHE_HOME=" QUORVANE_SOURCE_DIR "/build/test-cache",
                                     "QUORVANE_KEY_OFFSET=" + std::to_string(keyOffset())}});
    if (engine.find("server") != std::string::npos) awaitServed();
  }
  void end() {
    if (desktop_) run({"stop"});
    if (desktop_ && std::getenv("QUORVANE_SHOW_LOG") != nullptr) std::cout << desktop_->log();
    desktop_.reset();
  }
  void awaitServed() {
    for (const std::string_view each : {kMainApplication, kServer, kInputMethod}) {
      ASSERT_TRUE(eventually([&] { return member(each) != 0; })) << each << desktop().log();
    }
  }
  int run(std::vector<std::string> words) {
    words.insert(words.begin(), QUORVANE_PROGRAM);
    return Program(desktop().launch(words)).wait();
  }
  /// Process id; 0: it doesn't run.
  pid_t member(std::string_view signature) { return announced(runtimeFolder(), signature); }
  std::filesystem::path runtimeFolder() { return desktop().file("XDG_RUNTIME_DIR/quorvane"); }

  HeadlessDesktop& desktop() { return *desktop_; }
  Screen& screen() { return desktop().screen(); }

 private:
  std::optional<HeadlessDesktop> desktop_;
};

}  // namespace quorvane::tests
