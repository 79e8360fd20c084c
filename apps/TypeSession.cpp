#include "apps/TypeSession.h"

#include <iostream>

namespace quorvane {
namespace {

using std::chrono::milliseconds;
using SteadyClock = std::chrono::steady_clock;

constexpr milliseconds kQuiet{30};  ///< nothing has come for so long: no fix is on its way
constexpr milliseconds kQuietLimit{200};

/// The keyboard knows one return key, and a line feed comes of it.
char32_t keyFor(char32_t character) { return character == U'\n' ? U'\r' : character; }

bool endsWord(char32_t character) { return character == U' ' || character == U'\n'; }

}  // namespace

TypeSession::TypeSession(const TypeOptions& options)
    : delay_(options.delay),
      trace_([](std::string_view text) { std::cerr << text << '\n'; }),
      system_(options.system) {
  system_.messagePorts().received = [this](std::int32_t /*messageId*/, const CFData* /*data*/) {
    ++packets_;
  };
  if (options.trace) observe();
}

void TypeSession::observe() {
  ObservedMessagePorts& ports = system_.messagePorts();
  ports.received = [this](std::int32_t messageId, const CFData* data) {
    ++packets_;
    trace_.received(messageId, data);
  };
  ports.sent = [this](std::int32_t messageId, std::size_t size, std::int32_t result) {
    trace_.sent(messageId, size, result);
  };
  system_.sharedMemory().attached = [this](std::uint32_t key) { trace_.attached(key); };
  field::TextApplication& application = system_.textApplication();
  application.trace = [this](const field::EventReport& report) { trace_.event(report); };
  application.onClientCall = [this](const field::ClientCall& call) { trace_.clientCall(call); };
}

void TypeSession::run(std::u32string_view text) {
  system_.run([this, text] { typeAll(text); });
}

void TypeSession::typeAll(std::u32string_view text) {
  for (const char32_t character : text) {
    if (signal() != 0) return;
    typeOne(character);
  }
  awaitLastFixes();
}

void TypeSession::typeOne(char32_t character) {
  const auto type = [&] { system_.textApplication().type(keyFor(character)); };
  endsWord(character) ? wordEnds_.measure(type) : type();
  system_.settle();
  if (delay_.count() == 0) return;
  pause();
  system_.settle();
}

/// A signal needn't wait for the end of it.
void TypeSession::pause() {
  system_.host().runLoop().runUntil([this] { return signal() != 0; }, SteadyClock::now() + delay_);
}

void TypeSession::awaitLastFixes() {
  milliseconds quiet{0};
  for (milliseconds waited{0}; quiet < kQuiet && waited < kQuietLimit; waited += kTurn) {
    const std::uint64_t before = packets_;
    system_.host().runLoop().runFor(kTurn);
    system_.settle();
    quiet = packets_ == before ? quiet + kTurn : milliseconds{0};
  }
}

}  // namespace quorvane
