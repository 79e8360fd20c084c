#include <algorithm>
#include <optional>

#include "src/bridge/Presence.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/ResFile.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/menu/QBIM_IMK_Params.h"

namespace quorvane {
namespace {

struct FrontApplication {
  FourCharCode signature = 0;
  BundleIdentifier bundleIdentifier{};
};

FrontApplication frontApplication(Instance& instance) {
  FrontApplication front{FRONTPROCESSSIGNATURE(instance), {}};
  Get_FRONT_bundleIdentifier(instance, front.bundleIdentifier);
  front.bundleIdentifier.back() = 0;
  return front;
}

bool sameText(const BundleIdentifier& a, const BundleIdentifier& b) {
  const auto length = [](const BundleIdentifier& text) {
    return std::find(text.begin(), text.end(), 0) - text.begin();
  };
  return std::equal(a.begin(), a.begin() + length(a), b.begin(), b.begin() + length(b));
}

Handle switchesTable(Instance& instance) {
  return getOrMakeResource(instance, QORVPARAMCAPPKEYRESTYPE, kAppSwitchesID, sizeof(AppSwitches));
}

/// The offset of the first record that `matches`.
template <class Matches>
std::optional<std::size_t> findRecord(std::span<const std::uint8_t> table, const Matches& matches) {
  for (std::size_t at = 0; at + sizeof(AppSwitches) <= table.size(); at += sizeof(AppSwitches)) {
    if (matches(recordAt<AppSwitches>(table, at))) return at;
  }
  return {};
}

/// Where the record has no identifier, only applications without a signature have the same one.
bool isFoundByIdentifier(const AppSwitches& record, const FrontApplication& front) {
  if (record.bundleIdentifier[0] == 0 && record.signature != front.signature) return false;
  return sameText(record.bundleIdentifier, front.bundleIdentifier);
}

/// By signature, and by bundle identifier whatever the signature says; a free record is nobody's.
std::uint32_t readSwitches(std::span<const std::uint8_t> table, const FrontApplication& front) {
  const auto at = findRecord(table, [&](const AppSwitches& record) {
    if (front.signature != kNoSignature && record.signature == front.signature) return true;
    return record.signature != 0 && isFoundByIdentifier(record, front);
  });
  return at ? recordAt<AppSwitches>(table, *at).switches : kDefaultAppFlags;
}

/// By signature; by bundle identifier only where neither has one.
bool isWrittenFor(const AppSwitches& record, const FrontApplication& front) {
  if (record.signature == 0 || record.signature != front.signature) return false;
  return front.signature != kNoSignature ||
         sameText(record.bundleIdentifier, front.bundleIdentifier);
}

/// The record as it is to be; none where it says so already.
std::optional<AppSwitches> changed(AppSwitches record, const FrontApplication& front,
                                   std::uint32_t word) {
  if (front.signature == kNoSignature) {
    record.switches = word;
    return record;
  }
  if (record.switches == word) return {};
  record.switches = word;
  if (word == 0) record.signature = 0;
  if (record.bundleIdentifier[0] == 0) record.bundleIdentifier = front.bundleIdentifier;
  return record;
}

/// False: there is nothing to write.
bool writeSwitches(std::vector<std::uint8_t>& table, const FrontApplication& front,
                   std::uint32_t word) {
  auto at = findRecord(table, [&](const auto& record) { return isWrittenFor(record, front); });
  if (at) {
    const auto record = changed(recordAt<AppSwitches>(table, *at), front, word);
    if (record) putRecord(table, *at, *record);
    return record.has_value();
  }
  at = findRecord(table, [](const AppSwitches& record) { return record.signature == 0; });
  const std::size_t end = table.size() / sizeof(AppSwitches) * sizeof(AppSwitches);
  if (!at) table.resize(table.size() + sizeof(AppSwitches));
  putRecord(table, at.value_or(end), AppSwitches{front.signature, word, front.bundleIdentifier});
  return true;
}

/// False: it couldn't be written.
bool saveSwitches(Instance& instance) {
  const CurrentResFile file(instance, Open_Params_ResourceFile);
  if (!file) return true;
  const Handle table = switchesTable(instance);
  if (table == nullptr) return false;
  const std::uint32_t word = instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  if (!writeSwitches(table->content, frontApplication(instance), word)) return true;
  return Write_Changed_Resource(instance, table) == noErr;
}

}  // namespace

void Get_Qorvatatus_Flags(Instance& instance) {
  const std::uint32_t word = instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  const ToolRec record(instance);
  if (record && record.get(ToolCRecPtr_AppFlagStatus) != word) GetAndSetMenuParams3(instance);
}

void GetAppInteractivedata(Instance& instance) {
  std::uint32_t word = kDefaultAppFlags;
  if (FRONTPROCESSSIGNATURE(instance) != 0) {
    if (const Handle table = switchesTable(instance)) {
      word = readSwitches(table->content, frontApplication(instance));
    }
  }
  instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS = word;
  if (const ToolRec record(instance); record) record.put(ToolCRecPtr_AppFlagStatus, word);
}

// Another process may have changed the table since it was read.
void SaveAppInteractivedata(Instance& instance) {
  if (!saveSwitches(instance)) saveSwitches(instance);
}

}  // namespace quorvane
