// Statements about launching: which siblings are installed, where and how they start, and what
// leads to them.

#include <array>

#include "hosts/resources/AliasRecord.h"
#include "src/bridge/QBIMMessageSend.h"
#include "tools/parameters/ParameterFileInMemory.h"
#include "tools/scenario/World.h"

namespace quorvane::scenario {
namespace {

struct Sibling {
  std::string_view name;
  std::string_view process;
  FourCharCode signature;
  std::string_view bundleIdentifier;
  std::string_view port;  ///< that it serves beside what is scripted for it
};
constexpr std::array<Sibling, 3> kSiblings{{
    {"main-application", "Quorvane", "QVPX"_4cc, "com.tallowmere.quorvane", {}},
    {"server", "QuorvaneServer", "QVUI"_4cc, {}, {}},
    {"pencil-menu", "Quorvane_menulet", "QVKS"_4cc, "com.tallowmere.menulet",
     kBasicMenuletPortName},
}};

const Sibling& siblingNamed(const std::string& name) {
  for (const Sibling& sibling : kSiblings) {
    if (sibling.name == name) return sibling;
  }
  throw BadStatement("there is no sibling " + name);
}

memory::MemoryInstalledApplication& installed(World& world, const Argument& name) {
  auto* const found = world.host.launchServices.findSignature(siblingNamed(name.word).signature);
  if (found == nullptr) throw BadStatement(name.word + " isn't installed");
  return *found;
}

/// The same serial number at each launch, so that it can be named.
void install(World& world, const Arguments& is) {
  const Sibling& sibling = siblingNamed(is[0].word);
  memory::MemoryInstalledApplication application;
  application.path = toBytes(is[1].text);
  application.process.psn = {2, sibling.signature};
  application.process.name = sibling.process;
  application.process.signature = sibling.signature;
  application.process.bundleIdentifier = sibling.bundleIdentifier;
  application.whenItRuns = [&world, &sibling] {
    if (!sibling.port.empty()) world.host.messagePorts.serve(sibling.port, {});
  };
  world.applications[is[0].word] = application.process.psn;
  world.host.launchServices.install(std::move(application));
}
void haveBundle(World& world, const Arguments& is) {
  world.host.bundle.bundles[std::string(siblingNamed(is[0].word).bundleIdentifier)] =
      toBytes(is[1].text);
}
void failToLaunch(World& world, const Arguments& is) { installed(world, is[0]).fails = true; }
void neverLaunch(World& world, const Arguments& is) { installed(world, is[0]).afterTicks.reset(); }
void takeTicks(World& world, const Arguments& is) {
  installed(world, is[0]).fails = false;
  installed(world, is[0]).afterTicks = is[1].measure;
}
void takeTicksDoing(World& world, const Arguments& is) {
  takeTicks(world, is);
  installed(world, is[0]).whenItStarts = [&world, statements = is[2].statements] {
    world.runInside(statements);
  };
}
void receiveOtherEvents(World& world, const Arguments& is) {
  world.host.launchServices.otherEvents = static_cast<int>(is[0].number);
}
void pointPreferences(World& world, const Arguments& is) {
  memory::MemoryFileManager& files = world.host.files;
  const std::string path = files.preferencesFolder + "/Quorvane ARC7 Preferences";
  files.put(path, "");
  files.changeResources(path, [&](auto& /*info*/, auto& fork) {
    fork.at("QLOC"_4cc, 128).data = resources::aliasRecord(toBytes(is[0].text));
  });
}
void setPencilMenuFlag(World& world, const Arguments& is) {
  parameters::changeParameterFile(world.host.files, [&](auto& file) {
    file.at("Pmen"_4cc, 8888).data = {static_cast<std::uint8_t>(is[0].number)};
  });
}

constexpr Pattern kLaunchStage[] = {
    {"NAME is installed at TEXT", install},
    {"NAME has its bundle at TEXT", haveBundle},
    {"NAME fails to launch", failToLaunch},
    {"NAME never launches", neverLaunch},
    {"NAME takes TIME ticks to launch", takeTicks},
    {"NAME takes TIME ticks to launch and does: STATEMENTS", takeTicksDoing},
    {"launch waits end COUNT times without a launch", receiveOtherEvents},
    {"preferences lead to TEXT", pointPreferences},
    {"pencil menu flag is BYTE", setPencilMenuFlag},
};

}  // namespace

std::span<const Pattern> launchStagePatterns() { return kLaunchStage; }

}  // namespace quorvane::scenario
