#include "hosts/icu/IcuTextEncoding.h"

#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace quorvane {
namespace {

using Bytes = std::span<const std::uint8_t>;

struct ConverterCloser {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

bool fitsIcu(std::size_t size) {
  return size <= static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
}

std::optional<std::u16string> fromAscii(Bytes bytes) {
  if (std::ranges::any_of(bytes, [](std::uint8_t byte) { return byte >= 128; })) return {};
  return std::u16string(bytes.begin(), bytes.end());
}

std::optional<std::u16string> fromUtf8(Bytes bytes) {
  if (bytes.empty()) return std::u16string();
  if (!fitsIcu(bytes.size())) return {};
  std::u16string text(bytes.size(), u'\0');
  std::int32_t length = 0;
  UErrorCode error = U_ZERO_ERROR;
  u_strFromUTF8(text.data(), static_cast<std::int32_t>(text.size()), &length,
                reinterpret_cast<const char*>(bytes.data()),
                static_cast<std::int32_t>(bytes.size()), &error);
  if (U_FAILURE(error)) return {};
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::optional<std::u16string> fromUtf16LittleEndian(Bytes bytes) {
  if (bytes.size() % 2 != 0) return {};
  std::u16string text(bytes.size() / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i) {
    text[i] = static_cast<char16_t>(bytes[2 * i] | (bytes[2 * i + 1] << 8));
  }
  return text;
}

std::optional<std::u16string> fromShiftJIS(Bytes bytes) {
  if (!fitsIcu(bytes.size())) return {};
  UErrorCode error = U_ZERO_ERROR;
  const Converter converter(ucnv_open("Shift_JIS", &error));
  if (U_FAILURE(error)) return {};
  ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
  std::u16string text(bytes.size(), u'\0');  // no character takes more units than bytes
  const std::int32_t length = ucnv_toUChars(
      converter.get(), text.data(), static_cast<std::int32_t>(text.size()),
      reinterpret_cast<const char*>(bytes.data()), static_cast<std::int32_t>(bytes.size()), &error);
  if (U_FAILURE(error)) return {};
  text.resize(static_cast<std::size_t>(length));
  return text;
}

}  // namespace

IcuTextEncoding::IcuTextEncoding() {
  UErrorCode error = U_ZERO_ERROR;
  const Converter converter(ucnv_open("macintosh", &error));
  if (U_FAILURE(error)) return;
  std::array<char, 256> bytes;
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i);
  const std::int32_t units = ucnv_toUChars(converter.get(), roman_.data(), 256, bytes.data(),
                                           static_cast<std::int32_t>(bytes.size()), &error);
  hasRoman_ = U_SUCCESS(error) && units == 256;
}

std::ptrdiff_t IcuTextEncoding::TECConvertText(std::span<const std::uint8_t> roman,
                                               std::uint8_t* out, std::size_t capacity) {
  if (!hasRoman_) return -1;
  const std::size_t units = std::min(roman.size(), capacity / 2);
  for (std::size_t i = 0; i < units; ++i) {
    const char16_t unit = roman_[roman[i]];
    out[2 * i] = static_cast<std::uint8_t>(unit & 0xFF);
    out[2 * i + 1] = static_cast<std::uint8_t>(unit >> 8);
  }
  return static_cast<std::ptrdiff_t>(2 * units);
}

bool IcuTextEncoding::CFStringGetCString(std::u16string_view text, std::span<std::uint8_t> out) {
  const auto romanOf = [this](char16_t unit) { return std::ranges::find(roman_, unit); };
  const bool converts = std::ranges::all_of(
      text, [&](char16_t unit) { return unit != 0 && romanOf(unit) != roman_.end(); });
  if (!hasRoman_ || !converts || text.size() >= out.size()) return false;
  const auto end = std::ranges::transform(text, out.begin(), [&](char16_t unit) {
                     return static_cast<std::uint8_t>(romanOf(unit) - roman_.begin());
                   }).out;
  *end = 0;
  return true;
}

std::optional<std::u16string> IcuTextEncoding::initWithData(std::span<const std::uint8_t> bytes,
                                                            NSStringEncoding encoding) {
  switch (encoding) {
    case NSStringEncoding::ASCII:
      return fromAscii(bytes);
    case NSStringEncoding::UTF8:
      return fromUtf8(bytes);
    case NSStringEncoding::ShiftJIS:
      return fromShiftJIS(bytes);
    case NSStringEncoding::UTF16LittleEndian:
      return fromUtf16LittleEndian(bytes);
  }
  return {};
}

}  // namespace quorvane
