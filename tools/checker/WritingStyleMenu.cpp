#include "tools/checker/WritingStyleMenu.h"

#include <algorithm>

#include "src/base/BigEndian.h"

namespace quorvane::checker {

namespace {

constexpr std::size_t kCheckedOffset = 4;
constexpr std::size_t kTitlesOffset = 8;
constexpr std::size_t kLongestTitle = 255;

}  // namespace

void writeMenuRecord(std::span<std::uint8_t> record, std::span<const std::string_view> titles,
                     std::uint32_t checked) {
  if (record.size() < kTitlesOffset) return;
  std::ranges::fill(record, std::uint8_t{0});
  std::uint32_t count = 0;
  std::size_t at = kTitlesOffset;
  for (const std::string_view title : titles) {
    if (title.size() > kLongestTitle || record.size() - at < title.size() + 1) break;
    record[at++] = static_cast<std::uint8_t>(title.size());
    std::ranges::copy(title, record.subspan(at).begin());
    at += title.size();
    ++count;
  }
  putBigEndian(record, 0, count);
  putBigEndian(record, kCheckedOffset, checked <= count ? checked : 0);
}

WritingStyleMenu::WritingStyleMenu(ToolRecord tool, std::span<std::uint8_t> record,
                                   std::filesystem::path configDirectory, quorvane::LogSink& log,
                                   InForce inForce)
    : tool_(tool),
      record_(record),
      configDirectory_(std::move(configDirectory)),
      log_(log),
      inForce_(std::move(inForce)) {
  use(readWritingStyle(configDirectory_, log_));
}

void WritingStyleMenu::show() const {
  std::array<std::string_view, kWritingStyles.size()> titles;
  std::ranges::transform(kWritingStyles, titles.begin(), &WritingStyle::title);
  writeMenuRecord(record_, titles, checked_);
}

void WritingStyleMenu::choose() {
  const std::uint32_t place = tool_.get(At::StyleChoice);
  if (place == 0 || place > kWritingStyles.size()) return;
  keepWritingStyle(configDirectory_, log_, place - 1);
  use(place - 1);
}

void WritingStyleMenu::use(std::size_t style) {
  checked_ = static_cast<std::uint32_t>(style) + 1;
  tool_.put(At::StyleMark, checked_);
  show();
  inForce_(kWritingStyles.at(style));
}

}  // namespace quorvane::checker
