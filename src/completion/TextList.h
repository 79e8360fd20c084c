#pragma once
// Some UTF-8 texts in one string, each ended by a byte that UTF-8 never holds.
//
//     n. a piece of fruit FF v. to pick fruit FF

#include <string>
#include <string_view>

namespace quorvane {

class TextList {
 public:
  TextList() = default;
  explicit TextList(std::string_view bytes) : bytes_(bytes) {}

  /// Ends the text whose bytes were put at the end of `list`.
  static void end(std::string& list) { list += kEnd; }
  static void append(std::string& list, std::string_view text) { end(list.append(text)); }

  /// A text that isn't ended isn't counted.
  template <class Visit>
  void forEach(Visit visit) const {
    std::string_view rest = bytes_;
    for (std::size_t end; (end = rest.find(kEnd)) != rest.npos; rest.remove_prefix(end + 1)) {
      visit(rest.substr(0, end));
    }
  }
  /// Empty where there is none.
  [[nodiscard]] std::string_view front() const {
    const std::size_t end = bytes_.find(kEnd);
    return end == bytes_.npos ? std::string_view() : bytes_.substr(0, end);
  }

 private:
  static constexpr char kEnd = '\xFF';

  std::string_view bytes_;
};

}  // namespace quorvane
