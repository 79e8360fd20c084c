#include "tests/model/SessionModel.h"

#include <algorithm>

namespace quorvane::model {
namespace {

constexpr std::string_view kMain = "com.tallowmere.quorvane";
constexpr std::uint32_t kMainSignature = "QVPX"_4cc;
constexpr std::uint32_t kScanBit = 0x10000;
constexpr std::size_t kEntry4 = 344 + 4 * 4;

bool isMain(const ApplicationNotification& notification) {
  return notification.application && notification.application->bundleIdentifier == kMain;
}

bool isKnown(const ProcessSerialNumber& psn) {
  return psn.highLongOfPSN != 0 && psn.lowLongOfPSN != 0;
}

bool isWordByte(std::uint8_t byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte == '&';
}

/// First byte of the UTF-8 form; half a pair alone has none.
std::uint8_t leadByte(const std::u16string& text) {
  if (text.empty()) return 0;
  const char16_t unit = text[0];
  if (unit < 0x80) return static_cast<std::uint8_t>(unit);
  if (unit < 0x800) return static_cast<std::uint8_t>(0xC0 | unit >> 6);
  if (unit < 0xD800 || unit > 0xDFFF) return static_cast<std::uint8_t>(0xE0 | unit >> 12);
  const bool pair = unit < 0xDC00 && text.size() > 1 && text[1] >= 0xDC00 && text[1] < 0xE000;
  return pair ? static_cast<std::uint8_t>(0xF0 | (0x40u + (unit & 0x3FFu)) >> 8) : 0;
}

}  // namespace

SessionModel::SessionModel(memory::MemoryHost& host, std::uint32_t appFlags)
    : flags(appFlags), host_(host) {
  using enum WorkspaceNotification;
  const auto observe = [&](WorkspaceNotification name, auto method) {
    observers_.push_back(
        host_.processes.addObserver(name, [this, method](const auto& n) { (this->*method)(n); }));
  };
  observe(DidLaunchApplication, &SessionModel::launched);
  observe(DidTerminateApplication, &SessionModel::terminated);
  observe(DidActivateApplication, &SessionModel::frontChanged);
  find();
  if (const auto* front = host_.processes.find(host_.processes.front())) {
    frontPid_ = front->pid;
    frontSignature_ = front->signature;
  }
  make(0);
  make(0);
  segment_ = usable(880);
}

// --- The main application and what is in front --------------------------------------------------

void SessionModel::find() {
  if (isKnown(psn_)) return;
  psn_ = {};
  if (const auto* main = host_.processes.findSignature(kMainSignature)) {
    psn_ = main->psn;
    pid_ = main->pid;
  }
}

std::int32_t SessionModel::listedPid() {
  for (const auto& application : host_.processes.runningApplications()) {
    if (application.bundleIdentifier == kMain) return application.processIdentifier;
  }
  return 0;
}

void SessionModel::launched(const ApplicationNotification& notification) {
  if (!isMain(notification)) return;
  find();
  psn_ = notification.serialNumber;
  if (pid_ == 0) pid_ = listedPid();
  find();
}

void SessionModel::terminated(const ApplicationNotification& notification) {
  if (!isMain(notification)) return;
  segment_.reset();
  psn_ = {};
  pid_ = 0;
}

void SessionModel::frontChanged(const ApplicationNotification& notification) {
  if (notification.application) frontPid_ = notification.application->processIdentifier;
  const auto* process = host_.processes.find(notification.serialNumber);
  frontSignature_ = process ? process->signature : 0;
  if (!isMain(notification)) return;
  psn_ = notification.serialNumber;
  pid_ = frontPid_;
}

bool SessionModel::running() { return isKnown(psn_) || listedPid() != 0; }

bool SessionModel::mainInFront() {
  if (pid_ == 0) pid_ = listedPid();
  return pid_ == frontPid_;
}

std::uint32_t SessionModel::frontSignature() {
  if (frontSignature_ != 0) return frontSignature_;
  const auto* process = host_.processes.find(host_.processes.front());
  return process ? process->signature : 0;
}

// --- Segments ----------------------------------------------------------------------------------

std::optional<int> SessionModel::usable(std::uint32_t key) {
  const auto id = running() ? host_.sharedMemory.find(key) : std::nullopt;
  return id && std::find(unusable.begin(), unusable.end(), *id) != unusable.end() ? std::nullopt
                                                                                  : id;
}

void SessionModel::observe() {
  seen_ = segment_ ? segment_ : usable(880);
  textSegment_ = usable(893);
  tool_.clear();
  text_.clear();
  if (seen_) tool_ = host_.sharedMemory.read(*seen_, 0, 376);
  if (textSegment_) text_ = host_.sharedMemory.read(*textSegment_, 0, 393);
  scanWrites.clear();
}

std::uint32_t SessionModel::word(const std::vector<std::uint8_t>& bytes, std::size_t offset) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value = value * 256 + bytes.at(offset + i);
  return value;
}

void SessionModel::setWord(std::vector<std::uint8_t>& bytes, std::size_t offset,
                           std::uint32_t value) {
  for (std::size_t i = 4; i-- > 0; value /= 256) {
    bytes.at(offset + i) = static_cast<std::uint8_t>(value % 256);
  }
}

std::string SessionModel::differenceInFields() const {
  if (!seen_) return {};
  std::string difference;
  const auto compare = [&](std::size_t offset, const std::string& name) {
    const auto now = host_.sharedMemory.read(*seen_, offset, 4);
    if (now.size() == 4 && word(now, 0) != word(tool_, offset)) {
      difference += name + " is " + std::to_string(word(now, 0)) + ", not " +
                    std::to_string(word(tool_, offset)) + "; ";
    }
  };
  for (const std::size_t i : {9, 11, 19, 20, 22, 34, 54}) {
    compare(68 + 4 * i, "field " + std::to_string(i));
  }
  compare(kEntry4, "entry 4");
  return difference;
}

// --- Sessions ----------------------------------------------------------------------------------

Session& SessionModel::make(std::uint32_t client) {
  Session& session = list_.emplace_back();
  session.client = client;
  session.tag = documentTag;
  session.handle = ++made_;
  return session;
}

void SessionModel::lookup(std::uint32_t client) {
  const std::uint32_t appInput = hasRecord() ? field(9) : 0;
  if (frontSignature() == kMainSignature || client == 0) return;
  for (Session& session : list_) {
    if (session.client != client) continue;
    session.appInput = appInput;
    if (appInput != 0) {
      session.cursor = session.length = 0;
      session.bytes[0] = '\0';
    } else {
      active_ = &session;
    }
    return;
  }
  Session& session = make(client);
  publish(session, 0);
  session.appInput = appInput;
  if (appInput != 0) return;
  active_ = &session;
  if (hasRecord()) setField(34, session.handle);
}

void SessionModel::activated(std::uint32_t client) {
  attach();
  lookup(client);
  if (hasRecord()) setField(9, 0);
}

void SessionModel::event(const NSEvent& event, bool withEventRef, std::uint32_t client) {
  attach();
  if (hasRecord() && field(22) != 0) return setField(22, 0);
  if (mainInFront()) return;
  for (const Session& session : list_) {
    if (session.client == client && session.appInput != 0) return;
  }
  if (hasRecord() && field(9) != 0) return;
  lookup(client);
  const bool isKey = event.type == NSEventType::KeyDown || event.type == NSEventType::KeyUp;
  if (!isKey && event.type != NSEventType::FlagsChanged) return;
  if (isKey && !withEventRef) return;
  const bool command = (event.modifierFlags & NSEventModifierFlagCommand) != 0;
  if (isKey && command && leadByte(event.characters) == 9) return;
  if (!hasRecord()) return;
  if (event.type == NSEventType::KeyDown) sessionEvent(event);
  segment_ = usable(880);  // detached, then looked at again: a restarted one is found here
}

void SessionModel::sessionEvent(const NSEvent& event) {
  const std::uint32_t modifiers =
      event.modifierFlags &
      (NSEventModifierFlagCommand | NSEventModifierFlagControl | NSEventModifierFlagFunction |
       NSEventModifierFlagOption | NSEventModifierFlagShift | NSEventModifierFlagCapsLock);
  const std::uint8_t key = leadByte(event.characters);
  if (modifiers == NSEventModifierFlagCommand && key == 'a' && active_) forget(*active_);
  constexpr std::uint32_t kNotTyping =
      NSEventModifierFlagCommand | NSEventModifierFlagControl | NSEventModifierFlagFunction;
  if ((modifiers & kNotTyping) == 0) handleInput(key);
}

void SessionModel::handleInput(std::uint8_t key) {
  if (!active_) {
    active_ = &unlisted_.emplace_back();
    active_->tag = documentTag;
    active_->handle = ++made_;
    publish(*active_, 0);
  }
  Session& session = *active_;
  if (key == 3) key = 13;
  if (key == 8 || key == 127) {
    erase(session);
  } else if (key == 30 || key == 31) {
    forget(session);
  } else if (key == 28 && session.cursor > 0) {
    session.editState |= 1;
    --session.cursor;
  } else if (key == 29 && session.cursor < session.length) {
    ++session.cursor;
  } else if (key != 0 && key != 11 && key != 12 && key != 27 && key != 28 && key != 29) {
    insert(session, key);
  }
  interactive(session, key);
}

void SessionModel::makeRoom(Session& session) {
  const auto before = [&](std::uint32_t distance) {
    return session.cursor < distance ? '\0' : session.bytes[session.cursor - distance];
  };
  const auto isOneOf = [](char byte, std::string_view set) {
    return set.find(byte) != std::string_view::npos;
  };
  if (session.length < 320) return;
  if (isOneOf(before(1), " \r\t")) {
    const bool sentenceEnd = isOneOf(before(2), ".?!\r");
    if (!sentenceEnd && session.length < 368) return;
    if (!sentenceEnd) session.editState = 2;
    session.cursor = session.length = 0;
    ++reached[sentenceEnd ? "sentence ends" : "overflows"];
  } else if (session.length >= 384) {
    const bool tailOnly = session.length > session.cursor + 32;
    ++reached[tailOnly ? "tails dropped" : "texts dropped"];
    if (tailOnly) {
      session.length = session.cursor;
    } else {
      forget(session);
    }
  }
}

void SessionModel::insert(Session& session, std::uint8_t key) {
  makeRoom(session);
  if (session.length > session.cursor) {
    // The tail and the byte behind it move up; what lies further behind stays.
    const std::string tail =
        session.bytes.substr(session.cursor, session.length - session.cursor + 1);
    session.bytes.replace(session.cursor + 1, tail.size(), tail);
    session.bytes.resize(385);
  }
  session.bytes[session.cursor++] = static_cast<char>(key);
  session.bytes[++session.length] = '\0';
}

void SessionModel::erase(Session& session) {
  if (session.cursor == 0 || session.length == 0) return;
  if (session.cursor < session.length) {
    const std::string tail =
        session.bytes.substr(session.cursor, session.length - session.cursor + 1);
    session.bytes.replace(session.cursor - 1, tail.size(), tail);
  }
  session.bytes[session.length] = '\0';
  --session.cursor;
  --session.length;
}

void SessionModel::forget(Session& session) {
  if (session.cursor != 0) session.editState = 3;
  session.cursor = session.length = 0;
}

// --- Publication, scan, and what comes back ------------------------------------------------------

void SessionModel::interactive(Session& session, std::uint8_t key) {
  if ((flags & 0x73) == 0) return;
  std::uint32_t suspended = hasRecord() ? field(19) : 0;
  if (suspended != 0) {
    setField(20, field(20) + 1);
    if ((session.handle ^ field(34)) & 0xFFFF) {
      setField(19, 0);
      setField(20, 0);
      suspended = 0;
      ++reached["suspensions ended"];
    } else if (suspended > field(20)) {
      ++reached["suspended keys"];
      return;
    }
  }
  publish(session, key);
  if (!hasRecord()) return;
  if (isWordByte(key) && suspended == 0 && session.editState == 0) return;
  if (key == 27) return;
  if (suspended == 0 && field(31) == 0 && (key == 8 || key == 28)) return;
  if ((flags & kScanBit) != 0) {
    ++reached["scans"];
    for (const Write& write : scanWrites) {
      auto& target = write.segment == seen_ ? tool_ : text_;
      if (write.segment != seen_ && write.segment != textSegment_) continue;
      for (std::size_t i = 0; i < write.bytes.size() && write.offset + i < target.size(); ++i) {
        target[write.offset + i] = write.bytes[i];
      }
    }
    setField(22, field(22) & ~kScanBit);
    setField(54, field(54) & ~kScanBit);
    updateFrom(session);
  }
  session.editState = 0;
}

void SessionModel::publish(Session& session, std::uint8_t key) {
  if (!hasRecord() || field(6) == 0) return;
  setWord(tool_, kEntry4, session.editState);
  setField(34, session.handle);
  if (!textSegment_) return;
  setWord(text_, 0, session.cursor);
  setWord(text_, 4, session.length);
  std::copy_n(session.bytes.begin(), session.cursor + 1, text_.begin() + 8);
  if (key == 0 && session.cursor != 0) {
    key = static_cast<std::uint8_t>(session.bytes[session.cursor - 1]);
  }
  text_[392] = key;
}

void SessionModel::updateFrom(Session& session) {
  if (!hasRecord()) return;
  session.editState = word(tool_, kEntry4);
  if (field(11) == 0) return;
  setField(11, 0);
  if (!textSegment_) return;
  const std::uint32_t cursor = word(text_, 0);
  const std::uint32_t length = word(text_, 4);
  const bool possible = cursor <= length && length <= 384;
  ++reached[possible ? "texts taken back" : "impossible texts"];
  if (!possible) return;
  session.cursor = cursor;
  session.length = length;
  std::copy_n(text_.begin() + 8, cursor, session.bytes.begin());
}

void SessionModel::update() {
  if (!active_) return;
  attach();
  updateFrom(*active_);
}

void SessionModel::fixArrived(bool decoded, bool direct) {
  if (decoded) update();
  if (decoded && direct) {
    attach();
    if (hasRecord()) setField(22, 0);
  }
  if (active_ && active_->tag != 0) update();
}

}  // namespace quorvane::model
