#include "tools/parameters/ParameterFile.h"

namespace quorvane::parameters {
namespace {

using resources::Bytes;

constexpr std::size_t kSwitchesRecord = 40;
constexpr std::size_t kLongestIdentifier = 31;

Bytes recordFor(const Application& application, std::uint32_t word) {
  Bytes record;
  resources::appendNumber(record, application.signature);
  resources::appendNumber(record, word);
  const std::string identifier = application.bundleIdentifier.substr(0, kLongestIdentifier);
  record.insert(record.end(), identifier.begin(), identifier.end());
  record.resize(kSwitchesRecord);
  return record;
}

/// The record's signature and bundle identifier; the word between them is what may differ.
bool isSameApplication(const Bytes& table, std::size_t at, const Bytes& record) {
  const resources::ByteView known = resources::ByteView(table).subspan(at, kSwitchesRecord);
  if (!std::ranges::equal(known.first(4), resources::ByteView(record).first(4))) return false;
  const bool hasSignature = bigEndianNumber<FourCharCode>(record) != Application().signature;
  return hasSignature ||
         std::ranges::equal(known.subspan(8), resources::ByteView(record).subspan(8));
}

}  // namespace

void setSwitches(resources::ResourceFork& file, const Application& application,
                 std::uint32_t word) {
  const Bytes record = recordFor(application, word);
  Bytes& table = file.at("CGMI"_4cc, 8889).data;
  std::size_t at = 0;
  while (at + kSwitchesRecord <= table.size() && !isSameApplication(table, at, record)) {
    at += kSwitchesRecord;
  }
  table.resize(std::max(table.size(), at + kSwitchesRecord));
  std::ranges::copy(record, table.begin() + static_cast<std::ptrdiff_t>(at));
}

void setCompletionFlags(resources::ResourceFork& file, CompletionFlags flags) {
  file.at("AutC"_4cc, 8888).data = {std::uint8_t{flags.withSpace}, std::uint8_t{flags.vertical},
                                    std::uint8_t{flags.shiftToggle}};
}

}  // namespace quorvane::parameters
