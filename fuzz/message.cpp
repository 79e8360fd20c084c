// Messages on the input method's own port: the packet that carries one, and what the port does with
// any id and payload, before and after it has met a client.

#include "fuzz/Target.h"
#include "hosts/desktop/MessageFraming.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/shell/QBIMMessageReceive.h"
#include "tests/support/World.h"

namespace quorvane::fuzz {
namespace {

constexpr int kMessageLimit = 64;

enum Way : std::uint8_t {
  kWithoutData = 1,
  kThroughRunLoop = 2,
  kKeyAfterwards = 4,
  kWorldBefore = 8,
  kPlanned = 16,
  kHugePacket = 32,
};

std::optional<desktop::Request> decode(Bytes packet) {
  const auto request = desktop::decodeRequest(packet);
  if (!request) return request;
  const auto header = desktop::encodeRequestHeader(request->messageId, request->replyWanted);
  require(std::equal(header.begin(), header.end(), packet.begin()), "a header is as it was sent");
  require(request->payload.data() == packet.data() + header.size() &&
              request->payload.size() == packet.size() - header.size(),
          "a payload is the rest of its packet");
  return request;
}

void handle(Subject& subject, const desktop::Request& request, std::uint8_t way) {
  const CFData data = copyOf(request.payload);
  if ((way & kThroughRunLoop) != 0) {
    subject.host.mainApplication.sendMessage(
        request.messageId, (way & kWithoutData) != 0 ? std::nullopt : std::optional(data));
    subject.host.runPending();
    return;
  }
  const auto reply = BIMMessagePortCallBack(subject.instance, request.messageId,
                                            (way & kWithoutData) != 0 ? nullptr : &data);
  require(!reply, "the port never replies");
}

void message(Subject& subject, Input& input) {
  const std::uint8_t way = input.byte();
  if ((way & kWorldBefore) != 0) worldAction(subject, input);
  if ((way & kPlanned) != 0) {
    const std::uint8_t n = input.byte();
    planAtCall(subject, n, input.counted());
  }
  auto packet = copyOf(input.take(input.half() % 1024));
  if ((way & kHugePacket) != 0) packet.resize(packet.size() + 65500 + input.byte(), 'a');
  if (const auto request = decode(packet)) handle(subject, *request, way);
  if (!subject.ended() && (way & kKeyAfterwards) != 0) subject.press(keyEvent(input));
}

}  // namespace

void run(Bytes bytes) {
  Subject subject;
  Input input(bytes);
  subject.host.textServicesManager.activeDocument = input.byte() % 2;
  subject.host.textServicesManager.documentProperties[1]["dapy"_4cc] = 1;
  takeSteps(subject, input, kMessageLimit, [&] { message(subject, input); });
}

}  // namespace quorvane::fuzz
