#include "apps/TypeTrace.h"

#include "apps/Describe.h"

namespace quorvane {

void TypeTrace::event(const field::EventReport& report) {
  const bool silent = report.event.type == NSEventType::KeyUp && report.clientCalls.empty() &&
                      report.outcome == field::Outcome::PassedOn;
  if (silent) return attached_.clear();
  line(describe(report));
}

void TypeTrace::clientCall(const field::ClientCall& call) {
  line("    client " + field::describe(call));
}

void TypeTrace::received(std::int32_t messageId, const CFData* data) {
  line(describeReceived(messageId, data));
}

void TypeTrace::sent(std::int32_t messageId, std::size_t size, std::int32_t result) {
  line("    " + describeSent(messageId, size, result));
}

void TypeTrace::line(std::string text) {
  if (!attached_.empty()) text += ", attached";
  for (const std::uint32_t key : attached_) text += ' ' + std::to_string(key);
  attached_.clear();
  write_(text);
}

}  // namespace quorvane
