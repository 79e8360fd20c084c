// The bytes of a keyboard layout: the walk to a character, the trials of its modifiers, the string
// of a key, and the translation that both hosts share.

#include "fuzz/Target.h"
#include "hosts/memory/MemoryHost.h"
#include "src/keys/AsciiToKeyCode.h"

namespace quorvane::fuzz {
namespace {

/// Before the layout.
constexpr std::size_t kQuestions = 32;

void findCharacter(Instance& instance, Bytes layout, std::int8_t character) {
  std::int32_t shift = 0;
  std::int32_t option = 0;
  const std::uint32_t key = keyCodeForCharWithLayout(instance, character, layout, shift, option);
  require(key <= kNoKeyCode, "a key code has 16 bits");
  require(shift >> 1 == 0 && option >> 1 == 0, "an answer is yes or no");
  if (key == kNoKeyCode) {
    require(shift == 0 && option == 0, "without a key there are no modifiers");
    return;
  }
  require(character >= 0, "only 7-bit characters are found");
  require(2 * std::size_t{key} + 2 <= layout.size(), "the key's output lies inside the layout");
}

void translate(UnicodeUtilities& utilities, Bytes layout, Input& input) {
  const std::uint16_t key = input.byte();
  std::uint32_t deadKeyState = input.number();
  std::array<char16_t, 4> units{};
  const std::span<char16_t> room(units.data(), input.below(5));
  std::size_t length = 0;
  const OSStatus status =
      utilities.UCKeyTranslate(layout, key, input.byte(), input.number(), input.number(),
                               input.byte(), deadKeyState, room, length);
  require(status != noErr || length <= room.size(), "what is typed fits");
}

void askForString(memory::MemoryHost& host, Instance& instance, Bytes layout, Input& input) {
  host.useLayout(std::make_shared<const std::vector<std::uint8_t>>(copyOf(layout)));
  const auto text = createStringForKey(instance, input.half());
  require(text && text->size() == 1, "a key's string has one unit");
}

}  // namespace

void run(Bytes bytes) {
  static memory::MemoryHost host;  // nothing of a question stays in it but the layout
  static Instance instance{host.platform()};
  host.journal.setRecording(false);
  const std::size_t questions = std::min(bytes.size(), kQuestions);
  Input input(bytes.first(questions));
  // A copy of its own, so that one byte too far is seen.
  const auto layout = copyOf(bytes.subspan(questions));
  findCharacter(instance, layout, static_cast<std::int8_t>(input.byte()));
  translate(host.unicodeUtilities, layout, input);
  askForString(host, instance, layout, input);
}

}  // namespace quorvane::fuzz
