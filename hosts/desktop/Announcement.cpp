#include "hosts/desktop/Announcement.h"

#include <algorithm>
#include <charconv>

namespace quorvane::desktop {
namespace {

constexpr std::string_view kFirstLine = "quorvane-process 1";
constexpr std::string_view kSuffix = ".process";
constexpr std::size_t kNameLimit = 63;
constexpr std::size_t kIdentifierLimit = 255;

bool isPrintable(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= 0x20 && c < 0x7F; });
}

std::string textOfCode(FourCharCode code) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) text.push_back(static_cast<char>(code >> shift));
  return text;
}

std::optional<FourCharCode> codeOfText(std::string_view text) {
  if (text.size() != 4 || !isPrintable(text)) return {};
  FourCharCode code = 0;
  for (const char c : text) code = (code << 8) | static_cast<unsigned char>(c);
  return code;
}

/// A process id as it is written: decimal, positive, without leading zeros.
std::optional<std::int32_t> pidOfText(std::string_view text) {
  std::int32_t pid = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, pid);
  if (result.ec != std::errc{} || result.ptr != end || pid <= 0 || text.front() == '0') return {};
  return pid;
}

bool isValid(const Announcement& announcement) {
  return !announcement.name.empty() && announcement.name.size() <= kNameLimit &&
         announcement.bundleIdentifier.size() <= kIdentifierLimit &&
         isPrintable(announcement.name) && isPrintable(announcement.bundleIdentifier) &&
         isPrintable(textOfCode(announcement.signature)) &&
         isPrintable(textOfCode(announcement.type));
}

/// Takes the line "key=value" off `rest`.
std::optional<std::string_view> takeValue(std::string_view& rest, std::string_view key) {
  const std::size_t end = rest.find('\n');
  if (end == std::string_view::npos) return {};
  std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end + 1);
  if (!line.starts_with(key) || line.size() == key.size() || line[key.size()] != '=') return {};
  return line.substr(key.size() + 1);
}

bool takeFirstLine(std::string_view& rest) {
  if (!rest.starts_with(kFirstLine) || rest.size() == kFirstLine.size()) return false;
  if (rest[kFirstLine.size()] != '\n') return false;
  rest.remove_prefix(kFirstLine.size() + 1);
  return true;
}

std::string serialText(std::int32_t pid) { return "1:" + std::to_string(pid); }

}  // namespace

ProcessSerialNumber serialNumberOf(std::int32_t pid) {
  return {1, static_cast<std::uint32_t>(pid)};
}

std::string announcementFileName(std::int32_t pid) { return std::to_string(pid).append(kSuffix); }

std::optional<std::int32_t> pidOfAnnouncementFile(std::string_view fileName) {
  if (!fileName.ends_with(kSuffix) || fileName.size() == kSuffix.size()) return {};
  return pidOfText(fileName.substr(0, fileName.size() - kSuffix.size()));
}

std::optional<std::string> formatAnnouncement(const AnnouncedProcess& process) {
  const Announcement& announcement = process.announcement;
  if (process.pid <= 0 || !isValid(announcement)) return {};
  std::string content(kFirstLine);
  const auto add = [&content](std::string_view key, std::string_view value) {
    content.append("\n").append(key).append("=").append(value);
  };
  add("pid", std::to_string(process.pid));
  add("serial", serialText(process.pid));
  add("name", announcement.name);
  add("signature", textOfCode(announcement.signature));
  add("type", textOfCode(announcement.type));
  add("bundle", announcement.bundleIdentifier);
  return content.append("\n");
}

std::optional<AnnouncedProcess> parseAnnouncement(std::string_view content) {
  if (content.size() > kAnnouncementSizeLimit || !takeFirstLine(content)) return {};
  const auto pidText = takeValue(content, "pid");
  const auto serial = takeValue(content, "serial");
  const auto name = takeValue(content, "name");
  const auto signatureText = takeValue(content, "signature");
  const auto typeText = takeValue(content, "type");
  const auto bundle = takeValue(content, "bundle");
  if (!pidText || pidText->empty() || !serial || !name || !signatureText || !typeText || !bundle ||
      !content.empty()) {
    return {};
  }
  const auto pid = pidOfText(*pidText);
  const auto signature = codeOfText(*signatureText);
  const auto type = codeOfText(*typeText);
  if (!pid || !signature || !type || *serial != serialText(*pid)) return {};
  AnnouncedProcess process{*pid, {std::string(*name), *signature, *type, std::string(*bundle)}};
  if (!isValid(process.announcement)) return {};
  return process;
}

}  // namespace quorvane::desktop
