#include "src/base/Log.h"

#include <algorithm>
#include <cstring>

#include "src/base/Text.h"

namespace quorvane {

void LogLine::add(std::string_view text) {
  const std::size_t count = std::min(text.size(), bytes_.size() - size_);
  std::memcpy(bytes_.data() + size_, text.data(), count);
  size_ += count;
}

void LogLine::add(const Private& text) {
  if (!showPrivate_) return add("<private>");
  std::array<char, 4> utf8;
  std::u16string_view rest = text.text;
  while (!rest.empty()) add(std::string_view(utf8.data(), takeUtf8(rest, utf8)));
}

void LogLine::add(PrivateNumber typed) {
  if (!showPrivate_) return add("<private>");
  add(typed.number);
}

}  // namespace quorvane
