#include "tests/support/World.h"

#include <string>
#include <string_view>

#include "hosts/menu/MenuTracking.h"
#include "src/menu/CurrentAppFlags.h"
#include "tests/support/RandomKeys.h"

namespace quorvane::fuzz {
namespace {

using memory::MemoryProcesses;
using memory::Notice;

constexpr int kActionsInScript = 8;
constexpr std::size_t kApplicationLimit = 8;
constexpr std::array<std::uint32_t, 5> kKeys{880, 893, 896, 897, 899};

Notice notice(Input& input) { return input.flag() ? Notice::Missed : Notice::Queued; }

ProcessSerialNumber someProcess(Subject& subject, Input& input) {
  switch (input.below(6)) {
    case 0:
      return MemoryProcesses::editor();
    case 1:
      return subject.host.mainApplication.psn();
    case 2:
      return MemoryProcesses::self();
    case 3:
      return {};
    case 4:
      return {1, 8192U + input.byte()};
    default:
      return {input.number(), input.number()};
  }
}

// The records.

void writeField(Subject& subject, Input& input) {
  const std::size_t at = 68 + 4 * input.below(77);
  subject.host.sharedMemory.writeWord(segment(subject, 880), at, input.number());
}
void writeBytes(Subject& subject, Input& input) {
  const int id = segment(subject, segmentKey(input));
  const std::size_t at = input.half() % 4100;
  subject.host.sharedMemory.write(id, at, input.counted());
}
void replaceAny(Subject& subject, Input& input) {
  const std::uint32_t key = segmentKey(input);
  replaceSegment(subject, key, input);
}
void removeSegment(Subject& subject, Input& input) {
  subject.host.sharedMemory.remove(segment(subject, segmentKey(input)));
}
void failAttach(Subject& subject, Input& input) {
  using memory::AttachFailure;
  constexpr std::array kFailures{AttachFailure::None, AttachFailure::Failed, AttachFailure::Null};
  const std::uint32_t key = segmentKey(input);
  subject.host.sharedMemory.failAttach(key, input.oneOf(kFailures));
}

// The main application.

void launch(Subject& subject, Input& input) { subject.host.mainApplication.launch(notice(input)); }
void vanish(Subject& subject, Input& input) {
  const Notice how = notice(input);
  subject.host.mainApplication.vanish(
      how, input.flag() ? memory::SegmentFate::Kept : memory::SegmentFate::Removed);
}
void sendFix(Subject& subject, Input& input) {
  const std::uint32_t count = input.number();
  subject.host.mainApplication.sendFix(count, textOf(input.counted()));
}
void sendMessage(Subject& subject, Input& input) {
  constexpr std::array<std::uint32_t, 12> kIds{
      202, 220, 230, 240, 250, 251, "Updt"_4cc, "gInt"_4cc, "gMen"_4cc, "oMen"_4cc, 0, 0xFFFFFFFF};
  // One in 256 asks the input method to quit.
  const std::uint8_t choice = input.byte();
  const std::uint32_t id = choice == 0xFF ? "IMqt"_4cc : kIds[choice % kIds.size()];
  const bool withData = (choice & 0x40) == 0;
  const Bytes data = input.counted();
  subject.host.mainApplication.sendMessage(static_cast<std::int32_t>(id),
                                           withData ? std::optional(copyOf(data)) : std::nullopt);
}
void changeServer(Subject& subject, Input& input) {
  memory::MemoryServer server;
  const std::uint8_t manner = input.byte();
  server.silent = (manner & 1) != 0;
  server.full = (manner & 2) != 0;
  server.delayTicks = (manner & 4) != 0 ? input.byte() : 0;
  if ((manner & 8) != 0) {
    server.answer = [reply = copyOf(input.counted())](std::int32_t, const CFData&) {
      return std::optional(reply);
    };
  }
  constexpr std::string_view kPort = memory::MemoryMainApplication::kServerPort;
  if ((manner & 16) != 0) return subject.host.messagePorts.stopServing(kPort);
  subject.host.messagePorts.serve(kPort, std::move(server));
}

// The system.

void changeFront(Subject& subject, Input& input) {
  const ProcessSerialNumber psn = someProcess(subject, input);
  subject.host.processes.setFront(psn, notice(input));
}
void notify(Subject& subject, Input& input) {
  constexpr std::array kNames{WorkspaceNotification::DidLaunchApplication,
                              WorkspaceNotification::DidTerminateApplication,
                              WorkspaceNotification::DidActivateApplication};
  constexpr std::array<std::string_view, 4> kBundles{
      "com.tallowmere.quorvane", "com.tallowmere.menulet", "com.example.writer", ""};
  const WorkspaceNotification name = input.oneOf(kNames);
  const ProcessSerialNumber psn = someProcess(subject, input);
  std::optional<NSRunningApplication> application;
  if (input.flag()) {
    application = NSRunningApplication{static_cast<std::int32_t>(input.number()),
                                       std::string(input.oneOf(kBundles)), input.flag()};
  }
  subject.host.processes.post(name, psn, std::move(application));
}
void changeApplications(Subject& subject, Input& input) {
  constexpr std::array<FourCharCode, 4> kSignatures{"WRTR"_4cc, "QVPX"_4cc, "\?\?\?\?"_4cc, 0};
  MemoryProcesses& processes = subject.host.processes;
  if (input.flag()) {
    const ProcessSerialNumber psn = someProcess(subject, input);
    if (psn != MemoryProcesses::self()) processes.remove(psn, notice(input));
  } else if (processes.runningApplications().size() < kApplicationLimit) {
    memory::MemoryProcess added;
    added.name = "Other";
    added.signature = input.oneOf(kSignatures);
    added.informationFails = input.flag();
    processes.add(std::move(added), notice(input));
  }
}
void breakOrMend(Subject& subject, Input& input) {
  memory::MemoryHost& host = subject.host;
  const std::array<bool*, 8> parts{
      &host.processes.getCurrentProcessFails, &host.processes.getFrontProcessFails,
      &host.processes.wakeUpProcessFails,     &host.textEncoding.convertFails,
      &host.textEncoding.decodeFails,         &host.eventPosting.serviceOpenFails,
      &host.carbonEvents.createEventFails,    &host.carbonEvents.userCancelled};
  bool& part = *input.oneOf(parts);
  part = !part;
}
void changeSwitches(Subject& subject, Input& input) {
  constexpr std::array<std::uint32_t, 6> kSwitches{0x11833, 0x1800, 0x11873, 0x10001, 0x1033, 0};
  subject.instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS = input.oneOf(kSwitches);
}

void collectLeaves(const NSMenu& menu, std::vector<NSMenuItem*>& leaves) {
  for (const auto& item : menu.itemArray) {
    item->submenu ? collectLeaves(*item->submenu, leaves) : leaves.push_back(item.get());
  }
}

constexpr std::array<Step, 17> kActions{
    writeField,  writeBytes, lieAboutText, replaceAny,     removeSegment,     failAttach,
    launch,      vanish,     sendFix,      correctText,    sendMessage,       changeServer,
    changeFront, notify,     breakOrMend,  changeSwitches, changeApplications};

}  // namespace

void chooseFromMenu(Subject& subject, Input& input) {
  subject.host.text.callController([&](IMKInputController& controller) {
    MenuTracking tracking(controller);
    std::vector<NSMenuItem*> leaves;
    collectLeaves(*tracking.menu(), leaves);
    tracking.choose(*leaves[input.below(256) % leaves.size()]);
  });
}

void putUserFile(Subject& subject, Input& input) {
  memory::MemoryFileManager& files = subject.host.files;
  constexpr std::array<std::string_view, 2> kFolders{"Spelling/", "AutoType/"};
  std::string path = files.applicationSupportFolder + "/Quorvane/Quorvane Dictionaries/";
  path += input.oneOf(kFolders);
  files.makeFolder(path.substr(0, path.size() - 1));
  const std::string name(textOf(input.counted()));
  if (name.empty() || name.find_first_of(std::string_view("/\0", 2)) != name.npos) return;
  resources::ResourceFork fork;
  if (input.flag()) fork.at("cswt"_4cc, 0).data = copyOf(input.counted());
  files.put(path + name, "");
  files.putResources(path + name, {input.flag() ? "QDXC"_4cc : "TEXT"_4cc, "QVKT"_4cc}, fork);
}

void lieAboutText(Subject& subject, Input& input) {
  const int id = segment(subject, 893);
  subject.host.sharedMemory.writeWord(id, 0, input.number());
  subject.host.sharedMemory.writeWord(id, 4, input.number());
  subject.host.mainApplication.setField(11, 1);
}
void correctText(Subject& subject, Input& input) {
  subject.host.mainApplication.writeCorrectedText(textOf(input.counted()));
}

void worldAction(Subject& subject, Input& input) {
  subject.disturb();
  input.oneOf(kActions)(subject, input);
}

void worldActions(Subject& subject, Bytes script) {
  Input input(script);
  for (int left = kActionsInScript; left > 0 && !input.empty(); --left) {
    worldAction(subject, input);
  }
}

void planAtCall(Subject& subject, std::uint64_t n, Bytes script) {
  subject.host.journal.beforeCall(
      n, [&subject, actions = copyOf(script)] { worldActions(subject, actions); });
}

int segment(Subject& subject, std::uint32_t key) {
  return subject.host.sharedMemory.find(key).value_or(-1);
}

std::uint32_t segmentKey(Input& input) { return input.oneOf(kKeys); }

void replaceSegment(Subject& subject, std::uint32_t key, Input& input) {
  constexpr std::array<std::size_t, 12> kSizes{1,   8,   24,  375, 376,  384,
                                               392, 393, 400, 708, 4096, 10000};
  const std::size_t size = input.oneOf(kSizes);
  const std::uint8_t manner = input.byte();
  memory::SegmentOptions options;
  options.wholePages = (manner & 1) == 0;
  options.refused = (manner & 6) == 6;
  options.stranger = (manner & 24) == 24;
  subject.host.mainApplication.segmentSizes[key] = size;
  subject.host.mainApplication.segmentOptions[key] = options;
  subject.host.sharedMemory.create(key, size, options);
}

void press(Subject& subject, Input& input) { subject.press(keyEvent(input)); }

NSEvent keyEvent(Input& input) {
  model::Random random(input);
  return model::randomKey(random, model::Habit::Anything);
}

}  // namespace quorvane::fuzz
