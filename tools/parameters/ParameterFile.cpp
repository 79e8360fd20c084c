#include "tools/parameters/ParameterFile.h"

namespace quorvane::parameters {
namespace {

using resources::Bytes;
using resources::ByteView;

constexpr FourCharCode kSwitchesType = QORVPARAMCAPPKEYRESTYPE;
constexpr std::size_t kSwitchesRecord = sizeof(AppSwitches);
constexpr std::size_t kLongestIdentifier = sizeof(BundleIdentifier) - 1;

std::string cut(const std::string& identifier) { return identifier.substr(0, kLongestIdentifier); }

Bytes recordFor(const KnownApplication& application, std::uint32_t word) {
  Bytes record;
  resources::appendNumber(record, application.signature);
  resources::appendNumber(record, word);
  const std::string identifier = cut(application.bundleIdentifier);
  record.insert(record.end(), identifier.begin(), identifier.end());
  record.resize(kSwitchesRecord);
  return record;
}

Switches switchesAt(ByteView table, std::size_t at) {
  const ByteView record = table.subspan(at, kSwitchesRecord);
  const ByteView identifier = record.subspan(offsetof(AppSwitches, bundleIdentifier));
  const auto end = std::ranges::find(identifier, 0);
  return {{bigEndianNumber<FourCharCode>(record), std::string(identifier.begin(), end)},
          bigEndianNumber<std::uint32_t>(record.subspan(4))};
}

bool isSame(const KnownApplication& a, const KnownApplication& b) {
  return a.signature == b.signature &&
         (a.signature != kNoSignature || cut(a.bundleIdentifier) == cut(b.bundleIdentifier));
}

/// By signature, or by bundle identifier whatever the signature; none is nobody's.
bool countsFor(const KnownApplication& known, const KnownApplication& application) {
  if (known.signature == 0) return false;
  const bool bySignature = application.signature != kNoSignature;
  return (bySignature && known.signature == application.signature) ||
         (!known.bundleIdentifier.empty() &&
          cut(known.bundleIdentifier) == cut(application.bundleIdentifier));
}

/// The offset of the first record whose application `matches`; behind the last one: none does.
template <class Matches>
std::size_t findRecord(ByteView table, const Matches& matches) {
  std::size_t at = 0;
  while (at + kSwitchesRecord <= table.size() && !matches(switchesAt(table, at).application)) {
    at += kSwitchesRecord;
  }
  return at;
}

std::size_t placeFor(ByteView table, const KnownApplication& application) {
  const auto its = [&](const KnownApplication& each) { return isSame(each, application); };
  const auto isFree = [](const KnownApplication& each) { return each.signature == 0; };
  const std::size_t at = findRecord(table, its);
  return at + kSwitchesRecord <= table.size() ? at : findRecord(table, isFree);
}

}  // namespace

void setSwitches(ResourceFork& file, const KnownApplication& application, std::uint32_t word) {
  Bytes& table = file.at(kSwitchesType, kAppSwitchesID).data;
  const std::size_t at = placeFor(table, application);
  table.resize(std::max(table.size(), at + kSwitchesRecord));
  std::ranges::copy(recordFor(application, word), table.begin() + static_cast<std::ptrdiff_t>(at));
}

std::vector<Switches> switchesIn(const ResourceFork& file) {
  std::vector<Switches> all;
  const auto* const table = file.find(kSwitchesType, kAppSwitchesID);
  const std::size_t size = table == nullptr ? 0 : table->data.size();
  for (std::size_t at = 0; at + kSwitchesRecord <= size; at += kSwitchesRecord) {
    const Switches each = switchesAt(table->data, at);
    if (each.application.signature != 0) all.push_back(each);
  }
  return all;
}

std::optional<Switches> switchesOf(const ResourceFork& file, const KnownApplication& application) {
  for (const Switches& each : switchesIn(file)) {
    if (countsFor(each.application, application)) return each;
  }
  return {};
}

bool forgetSwitches(ResourceFork& file, const KnownApplication& application) {
  if (file.find(kSwitchesType, kAppSwitchesID) == nullptr) return false;
  Bytes& table = file.at(kSwitchesType, kAppSwitchesID).data;
  bool found = false;
  for (std::size_t at = 0; at + kSwitchesRecord <= table.size(); at += kSwitchesRecord) {
    if (!isSame(switchesAt(table, at).application, application)) continue;
    std::ranges::fill(std::span(table).subspan(at, kSwitchesRecord), std::uint8_t{0});
    found = true;
  }
  return found;
}

std::optional<bool> flagIn(const ResourceFork& file, const Flag& flag) {
  const auto* const flags = file.find(flag.type, kParamsID);
  if (flags == nullptr || flag.index >= flags->data.size()) return {};
  return flags->data[flag.index] != 0;
}

void setFlag(ResourceFork& file, const Flag& flag, bool on) {
  Bytes& flags = file.at(flag.type, kParamsID).data;
  flags.resize(std::max(flags.size(), flag.index + 1));
  flags[flag.index] = on ? 1 : 0;
}

void setCompletionFlags(ResourceFork& file, CompletionFlags flags) {
  setFlag(file, kWithSpace, flags.withSpace);
  setFlag(file, kVertical, flags.vertical);
  setFlag(file, kShiftToggle, flags.shiftToggle);
}

}  // namespace quorvane::parameters
