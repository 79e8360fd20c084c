// Statements that set the stage: what runs, what the shared records hold, what doesn't work.

#include <array>

#include "src/bridge/QBIMMessageSend.h"
#include "src/menu/CurrentAppFlags.h"
#include "tools/parameters/UseSwitches.h"
#include "tools/scenario/World.h"

namespace quorvane::scenario {
namespace {

constexpr std::int64_t kUsualSwitches = 0x11833;

/// In the parameter file, for the application in front, and known to both sides.
void useSwitches(World& world, std::int64_t switches) {
  const auto word = static_cast<std::uint32_t>(switches);
  world.host.mainApplication.appFlagStatus = word;
  world.host.mainApplication.setField(49, word);
  if (world.mainResult) {
    parameters::useSwitches(world.host, world.instance, word);
  } else {
    parameters::useSwitches(world.host, word);
  }
}

void setSwitches(World& world, const Arguments& is) { useSwitches(world, is[0].number); }

struct Version {
  std::int64_t number;
  double appKit;
};
// An AppKit version that each system version shipped with.
constexpr std::array<Version, 11> kVersions{{{106, 1038},
                                             {107, 1138},
                                             {108, 1187},
                                             {109, 1265},
                                             {1010, 1343},
                                             {1011, 1404},
                                             {1012, 1504},
                                             {1013, 1561},
                                             {1014, 1671},
                                             {1015, 1894},
                                             {1100, 2022}}};

void setSystemVersion(World& world, const Arguments& is) {
  world.mustNotHaveStarted();
  for (const Version& version : kVersions) {
    if (version.number == is[0].number) {
      const std::int64_t number = version.number < 1000 ? version.number + 900 : version.number;
      world.host.application.appKitVersion = version.appKit;
      world.host.application.systemVersion = {number / 100, number % 100};
      return;
    }
  }
  throw BadStatement("unknown system version");
}

// Records.

void setField(World& world, const Arguments& is) {
  world.records().setField(is[0].u32(), is[1].u32());
}
void setStatus(World& world, const Arguments& is) {
  world.records().setStatus(is[0].u32(), is[1].u32());
}
void setEntry(World& world, const Arguments& is) {
  world.records().setScanEntry(is[0].u32(), is[1].u32());
}
void setDefault(World& world, const Arguments& is) {
  choose(is[0].word, kUserDefaults);
  world.host.userDefaults.values[is[0].word] = choose(is[1].word, "off on") != 0;
}
void setWritingStyles(World& world, const Arguments& is) {
  constexpr std::int64_t kRoom = 40;
  if (is[0].number > kRoom) throw BadStatement("the menu buffer has no room for so many");
  std::vector<std::string> items;
  for (std::int64_t i = 0; i < is[0].number; ++i) items.push_back("Style " + std::to_string(i + 1));
  world.records().setMenuBuffer(items, 1);
}

void nameWritingStyles(World& world, const Arguments& is) {
  std::vector<std::string> items;
  for (const Literal& title : is[1].texts) items.push_back(toBytes(title));
  world.records().setMenuBuffer(items, is[0].u32());
}

int segment(World& world, const Argument& key) {
  const auto id = world.host.sharedMemory.find(key.u32());
  if (!id) throw BadStatement("there is no segment " + key.word);
  return *id;
}

void writeBytes(World& world, const Arguments& is) {
  const int id = segment(world, is[0]);
  const auto at = static_cast<std::size_t>(is[1].number);
  const std::size_t count = is[2].bytes.size();
  if (world.host.sharedMemory.read(id, at, count).size() < count) {
    throw BadStatement("the segment ends before that");
  }
  world.host.sharedMemory.write(id, at, is[2].bytes);
}
void scribble(World& world, const Arguments& is) {
  const std::vector<std::uint8_t> noise(8192, 0xFF);
  world.host.sharedMemory.write(segment(world, is[0]), 0, noise);
}
void removeSegment(World& world, const Arguments& is) {
  world.host.sharedMemory.remove(segment(world, is[0]));
}
void strangersSegment(World& world, const Arguments& is) {
  world.host.mainApplication.segmentOptions[is[0].u32()].stranger = true;
}
void smallSegment(World& world, const Arguments& is) {
  world.host.mainApplication.segmentOptions[is[0].u32()].wholePages = false;
  world.host.mainApplication.segmentSizes[is[0].u32()] = static_cast<std::size_t>(is[1].number);
}
void attachFails(World& world, const Arguments& is) {
  world.host.sharedMemory.failAttach(is[0].u32(), memory::AttachFailure::Failed);
}
void attachWorks(World& world, const Arguments& is) {
  world.host.sharedMemory.failAttach(is[0].u32(), memory::AttachFailure::None);
}

// Documents, screens and applications.

void setText(World& world, const Arguments& is) {
  world.document(is[0].word).setText(toUtf16(is[1].text));
}
void selectText(World& world, const Arguments& is) {
  const std::uint64_t from = world.place(is[0]);
  const std::uint64_t to = world.place(is[1]);
  if (to < from) throw BadStatement("the selection ends before it begins");
  world.focused().select({from, to - from});
}
void setCaretRectangle(World& world, const Arguments& is) {
  world.focused().lineRectangle = {is[0].measure, is[1].measure, is[2].measure, is[3].measure};
}
void setDocumentKind(World& world, const Arguments& is) {
  auto& services = world.host.textServicesManager;
  services.activeDocument = 1;
  services.documentProperties[1]["dapy"_4cc] = is[0].u32();
}
void setScreen(World& world, const Arguments& is) {
  world.host.screens.frames = {{0, 0, is[0].measure, is[1].measure}};
  world.host.screens.positioningBounds = {0, 22, is[0].measure, is[1].measure - 22};
}
void addSecondScreen(World& world, const Arguments& is) {
  world.host.screens.frames.push_back({is[2].measure, is[3].measure, is[0].measure, is[1].measure});
}
void moveMouse(World& world, const Arguments& is) {
  world.host.screens.mouse = {is[0].measure, is[1].measure};
}
void giveFirstSession(World& world, const Arguments& is) {
  BIMSessionRec* head = world.instance.state<SessionState>().gSessionHandleStart;
  if (head == nullptr) throw BadStatement("there is no session yet");
  const field::Client& client = world.host.text.clientOf(world.document(is[0].word));
  head->clientID = identityOf(&client);
}
void startApplication(World& world, const Arguments& is) {
  memory::MemoryProcess instance;
  instance.name = is[0].word;
  instance.signature = is[1].u32();
  instance.bundleIdentifier = toBytes(is[2].text);
  world.applications[is[0].word] = world.host.processes.add(instance);
  world.settle();
}
void startPencilMenu(World& world, const Arguments& /*is*/) {
  world.applications["pencil-menu"] = world.host.processes.add(
      {{}, 0, "Quorvane_menulet", "QVKS"_4cc, "APPL"_4cc, 0, "com.tallowmere.menulet", false});
  world.host.messagePorts.serve(kBasicMenuletPortName, {});
  world.settle();
}
void changeSignature(World& world, const Arguments& is) {
  world.host.processes.find(world.application(is[0].word))->signature = is[1].u32();
}
void installInputSource(World& world, const Arguments& is) {
  world.host.textInputSources.installed.push_back(std::make_shared<TISInputSource>(
      TISInputSource{toBytes(is[0].text), toBytes(is[0].text),
                     choose(is[1].word, "mode-only selectable") != 0, nullptr}));
}
void useInputSource(World& world, const Arguments& is) {
  world.host.textInputSources.current = std::make_shared<TISInputSource>(
      TISInputSource{toBytes(is[0].text), toBytes(is[0].text), true, nullptr});
}
void holdMouseButton(World& world, const Arguments& is) {
  world.host.carbonEvents.buttonDown = choose(is[0].word, "up down") != 0;
}

// What doesn't work.

struct Part {
  std::string_view name;
  void (*set)(memory::MemoryHost&, bool fails);
};
constexpr std::array<Part, 12> kParts{{
    {"candidates-panel", [](auto& host, bool f) { host.inputMethodKit.candidatesFail = f; }},
    {"server-connection", [](auto& host, bool f) { host.inputMethodKit.serverFails = f; }},
    {"own-port", [](auto& host, bool f) { host.messagePorts.createLocalFails = f; }},
    {"port-source", [](auto& host, bool f) { host.messagePorts.createRunLoopSourceFails = f; }},
    {"run-loop", [](auto& host, bool f) { host.messagePorts.getCurrentFails = f; }},
    {"own-process", [](auto& host, bool f) { host.processes.getCurrentProcessFails = f; }},
    {"front-process", [](auto& host, bool f) { host.processes.getFrontProcessFails = f; }},
    {"wake-up", [](auto& host, bool f) { host.processes.wakeUpProcessFails = f; }},
    {"event-creation", [](auto& host, bool f) { host.carbonEvents.createEventFails = f; }},
    {"keyboard-device", [](auto& host, bool f) { host.eventPosting.serviceOpenFails = f; }},
    {"text-conversion", [](auto& host, bool f) { host.textEncoding.convertFails = f; }},
    {"text-decoding", [](auto& host, bool f) { host.textEncoding.decodeFails = f; }},
}};

void setPart(World& world, const std::string& name, bool fails) {
  for (const Part& part : kParts) {
    if (part.name == name) return part.set(world.host, fails);
  }
  throw BadStatement("there is no part " + name);
}
void breakPart(World& world, const Arguments& is) { setPart(world, is[0].word, true); }
void mendPart(World& world, const Arguments& is) { setPart(world, is[0].word, false); }

// The server port of the main application, now and after its next start.

template <class Change>
void changeServer(World& world, Change change) {
  change(world.host.mainApplication.server);
  if (auto* server = world.host.messagePorts.server(memory::MemoryMainApplication::kServerPort)) {
    change(*server);
  }
}
void serverIsSilent(World& world, const Arguments& /*is*/) {
  changeServer(world, [](memory::MemoryServer& server) { server.silent = true; });
}
void serverIsFull(World& world, const Arguments& /*is*/) {
  changeServer(world, [](memory::MemoryServer& server) { server.full = true; });
}
void serverIsGone(World& world, const Arguments& /*is*/) {
  world.host.messagePorts.stopServing(memory::MemoryMainApplication::kServerPort);
}
void serverTakes(World& world, const Arguments& is) {
  changeServer(world, [&](memory::MemoryServer& server) { server.delayTicks = is[0].measure; });
}
void serverDoes(World& world, const Arguments& is) {
  changeServer(world, [&](memory::MemoryServer& server) {
    server.answer = [&world, statements = is[0].statements](auto, const auto&) {
      world.runInside(statements);
      return std::optional<CFData>(CFData{});
    };
  });
}

void serverDoesAtCommand(World& world, const Arguments& is) {
  changeServer(world, [&](memory::MemoryServer& server) {
    server.answer = [&world, earlier = server.answer, command = is[0].number,
                     statements = is[1].statements](std::int32_t id, const CFData& data) {
      if (id != command) return earlier ? earlier(id, data) : CFData{};
      world.runInside(statements);
      return std::optional<CFData>(CFData{});
    };
  });
}

// Answers to requests.

memory::Answer answer(World& world, double ticks, const std::vector<Statement>& statements) {
  return {.afterTicks = ticks,
          .action = [&world, statements] { world.runInside(statements); },
          .evenIfTakenBack = false};
}
void answerScan(World& world, const Arguments& is) {
  world.host.mainApplication.answerScan(answer(world, is[0].measure, {}));
}
void answerScanDoing(World& world, const Arguments& is) {
  world.host.mainApplication.answerScan(answer(world, is[0].measure, is[1].statements));
}
void neverAnswerScan(World& world, const Arguments& /*is*/) {
  world.host.mainApplication.ignoreScan();
}
void answerBit(World& world, const Arguments& is) {
  world.host.mainApplication.answer(is[0].u32(), answer(world, is[1].measure, {}));
}
void answerBitDoing(World& world, const Arguments& is) {
  world.host.mainApplication.answer(is[0].u32(), answer(world, is[1].measure, is[2].statements));
}

void setClockStep(World& world, const Arguments& is) {
  world.host.clock.step = static_cast<std::uint64_t>(is[0].number) * 1000;
}
void beforePlatformCall(World& world, const Arguments& is) {
  world.setHook(world.beforePlatformCall, {}, is[1].statements);
  world.host.journal.beforeCall(static_cast<std::uint64_t>(is[0].number),
                                [&world] { world.runHook(world.beforePlatformCall); });
}
void atClientCall(World& world, const Arguments& is) {
  world.setHook(world.atClientCall, toBytes(is[0].text), is[1].statements);
}

void setUsualStage(World& world, std::int64_t switches) {
  useSwitches(world, switches);
  world.host.mainApplication.launch();
  world.settle();
  world.start({});
  world.host.text.focus(&world.document("letter"));
  world.settle();
  forgetRecords(world);
}

void usualStage(World& world, const Arguments& /*is*/) { setUsualStage(world, kUsualSwitches); }
void completionStage(World& world, const Arguments& /*is*/) {
  setUsualStage(world, kUsualSwitches | kCompletionFlag);
}

constexpr Pattern kStage[] = {
    {"usual stage", usualStage},
    {"completion stage", completionStage},
    {"switches HEX", setSwitches},
    {"system version NUMBER", setSystemVersion},
    {"clock step COUNT microseconds", setClockStep},
    {"screen MEASURE by MEASURE", setScreen},
    {"second screen MEASURE by MEASURE at MEASURE MEASURE", addSecondScreen},
    {"mouse at MEASURE MEASURE", moveMouse},
    {"default TEXT is set NAME", setDefault},
    {"input source TEXT NAME", installInputSource},
    {"input source in use TEXT", useInputSource},
    {"mouse button NAME", holdMouseButton},
    {"field FIELD becomes NUMBER", setField},
    {"status ENTRY becomes NUMBER", setStatus},
    {"entry ENTRY becomes NUMBER", setEntry},
    {"writing styles PLACE", setWritingStyles},
    {"writing style PLACE of TEXTS", nameWritingStyles},
    {"segment SEGMENT at PLACE becomes BYTES", writeBytes},
    {"segment SEGMENT is scribbled over", scribble},
    {"segment SEGMENT is removed", removeSegment},
    {"segment SEGMENT is made by a stranger", strangersSegment},
    {"segment SEGMENT is made with COUNT bytes", smallSegment},
    {"segment SEGMENT fails to attach", attachFails},
    {"segment SEGMENT attaches again", attachWorks},
    {"document NAME holds TEXT", setText},
    {"select PLACE to PLACE", selectText},
    {"caret rectangle MEASURE MEASURE MEASURE MEASURE", setCaretRectangle},
    {"document kind NUMBER", setDocumentKind},
    {"first session belongs to NAME", giveFirstSession},
    {"application NAME with signature NUMBER and bundle TEXT", startApplication},
    {"application NAME has signature NUMBER", changeSignature},
    {"pencil menu runs", startPencilMenu},
    {"NAME fails", breakPart},
    {"NAME works", mendPart},
    {"server port is silent", serverIsSilent},
    {"server port is full", serverIsFull},
    {"server port is gone", serverIsGone},
    {"server port takes TIME ticks", serverTakes},
    {"server port does: STATEMENTS", serverDoes},
    {"server port at command NUMBER does: STATEMENTS", serverDoesAtCommand},
    {"scan takes TIME ticks", answerScan},
    {"scan takes TIME ticks and does: STATEMENTS", answerScanDoing},
    {"scan is never answered", neverAnswerScan},
    {"request bit BIT takes TIME ticks", answerBit},
    {"request bit BIT takes TIME ticks and does: STATEMENTS", answerBitDoing},
    {"before platform call COUNT do: STATEMENTS", beforePlatformCall},
    {"at client call TEXT do: STATEMENTS", atClientCall},
};

}  // namespace

std::span<const Pattern> stagePatterns() { return kStage; }

}  // namespace quorvane::scenario
