// Resource forks, the AppleDouble files around them, and what the parameter file's resources claim.

#include "fuzz/Target.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/menu/MenuShortcuts.h"
#include "src/menu/QBIMEndianCallBacks.h"
#include "tools/parameters/UseSwitches.h"

namespace quorvane::fuzz {
namespace {

using resources::ResourceFork;

void checkFork(Bytes bytes) {
  const auto fork = resources::readResourceFork(bytes);
  if (!fork) return require(!fork.fault.empty(), "a fork that is refused has a fault");
  const auto written = resources::writeResourceFork(*fork.value);
  // The map's offsets have 16 bits, and what it lists may have shared bytes or stood elsewhere.
  const bool full = written.fault.ends_with("are too many");
  require(written.value.has_value() || full, "what was read can be written");
  if (full) return;
  const auto again = resources::readResourceFork(*written.value);
  require(again.value.has_value(), "what was written can be read");
  require(resources::writeResourceFork(*again.value).value == written.value, "it says the same");
  require(again.value->resources.size() == fork.value->resources.size(), "all are kept");
}

void checkDouble(Bytes bytes) {
  const auto file = resources::readAppleDouble(bytes);
  if (!file) return;
  for (const auto& entry : file.value->entries) checkFork(entry.content);
  const auto written = resources::writeAppleDouble(*file.value);
  require(written.value.has_value(), "what was read can be written");
  const auto again = resources::readAppleDouble(*written.value);
  for (std::size_t i = 0; i < file.value->entries.size(); ++i) {
    require(again.value->entries[i].id == file.value->entries[i].id, "the table keeps its order");
    require(again.value->entries[i].content == file.value->entries[i].content, "entries are kept");
  }
}

void checkFlippers(const std::vector<std::uint8_t>& data) {
  std::vector<std::uint8_t> flipped = data;
  flipApplicationBlocks(flipped, false);
  flipApplicationBlocks(flipped, true);
  require(flipped == data, "the file's order comes back");
}

/// Without the table that the input method writes.
ResourceFork others(ResourceFork fork) {
  std::erase_if(fork.resources,
                [](const resources::Resource& each) { return each.type == "CGMI"_4cc; });
  return fork;
}

void checkParameters(Input input) {
  memory::MemoryHost host;
  Instance instance(host.platform());
  Install_CoreEndianInstallFlippers(instance);
  ResourceFork before;
  for (const FourCharCode type : {"QKYX"_4cc, "QKYS"_4cc, "CGMI"_4cc, "AutC"_4cc}) {
    auto& data = before.at(type, type == "CGMI"_4cc ? kAppSwitchesID : kParamsID).data;
    data = copyOf(input.take(input.byte()));
    checkFlippers(data);
  }
  host.processes.find(memory::MemoryProcesses::editor())->signature = input.number();
  parameters::changeParameterFile(host.files, [&](ResourceFork& file) { file = before; });
  GetAndSetMenuParams3(instance);
  Shortcut shortcut;
  GetKeyShortcutForCommandID(instance, input.number(), shortcut);
  Get_GlobalAutoCompleteFlag(instance, input.byte());
  instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS = input.number();
  SaveAppInteractivedata(instance);
  require(
      instance.platform().resourceManager.CurResFile() == memory::MemoryResources::kApplicationFile,
      "the current file is what it was");
  parameters::changeParameterFile(host.files, [&](const ResourceFork& now) {
    require(others(now) == others(before), "all else is kept");
    const std::size_t size = before.find("CGMI"_4cc, kAppSwitchesID)->data.size();
    const std::size_t grown = now.find("CGMI"_4cc, kAppSwitchesID)->data.size();
    require(grown == size || grown == size + sizeof(AppSwitches), "the table grows by a record");
  });
}

}  // namespace

void run(Bytes bytes) {
  checkFork(bytes);
  checkDouble(bytes);
  checkParameters(Input(bytes));
}

}  // namespace quorvane::fuzz
