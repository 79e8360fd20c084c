#pragma once
// The log. One line is put together from its pieces without an allocation; nothing happens at all
// while the sink is off.

#include <array>
#include <charconv>
#include <concepts>
#include <string_view>
#include <type_traits>

#include "src/base/Instance.h"

namespace quorvane {

/// Text that somebody typed, or that was read from somebody's document. Shown only where the person
/// running the host asked for it.
struct Private {
  std::u16string_view text;
};

/// A number that tells what somebody typed.
struct PrivateNumber {
  std::uint32_t number;
};

/// One line under construction; what doesn't fit its 512 bytes is cut.
class LogLine {
 public:
  explicit LogLine(bool showPrivate) : showPrivate_(showPrivate) {}

  void add(std::string_view text);
  void add(const Private& text);
  void add(PrivateNumber typed);
  template <std::integral Number>
  void add(Number number) {
    std::array<char, 24> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    add(std::string_view(digits.data(), static_cast<std::size_t>(end.ptr - digits.data())));
  }

  /// An identity, by its number.
  template <class Identity>
  requires std::is_enum_v<Identity>
  void add(Identity identity) { add(static_cast<std::underlying_type_t<Identity>>(identity)); }

  [[nodiscard]] std::string_view text() const { return {bytes_.data(), size_}; }

 private:
  std::array<char, 512> bytes_;
  std::size_t size_ = 0;
  bool showPrivate_;
};

/// Log(process, "* * frontPID ", pid);
template <class... Pieces>
void Log(Instance& instance, const Pieces&... pieces) {
  LogSink& sink = instance.platform().log;
  if (!sink.enabled) return;
  LogLine line(sink.showPrivate);
  (line.add(pieces), ...);
  sink.writeLine(line.text());
}

}  // namespace quorvane
