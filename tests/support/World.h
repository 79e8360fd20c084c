#pragma once
// What the world around the input method may do at any moment, also in the middle of a key: the
// main application, other processes, the system. One action is a byte that names it and its
// arguments.

#include "tests/support/Input.h"
#include "tests/support/Subject.h"

namespace quorvane::fuzz {

/// The person opens the Input Menu and takes one of its items, if it can be chosen.
void chooseFromMenu(Subject& subject, Input& input);
/// A dictionary or a list of abbreviations with any name, and perhaps a switch.
void putUserFile(Subject& subject, Input& input);

/// Something to do, with its arguments from the input.
using Step = void (*)(Subject& subject, Input& input);

void worldAction(Subject& subject, Input& input);
/// Cursor and length of the text record become any numbers.
void lieAboutText(Subject& subject, Input& input);
/// The main application writes another text.
void correctText(Subject& subject, Input& input);
/// All that `script` holds, up to a few.
void worldActions(Subject& subject, Bytes script);
/// Runs `script` just before the n-th call from now that the input method makes on the platform.
void planAtCall(Subject& subject, std::uint64_t n, Bytes script);

/// Its id now; -1, which no segment has, where there is none.
int segment(Subject& subject, std::uint32_t key);
/// One of the segments' keys.
std::uint32_t segmentKey(Input& input);
/// Makes the segment anew: of a usual or any other size, to the byte or in whole pages, refused, a
/// stranger's.
void replaceSegment(Subject& subject, std::uint32_t key, Input& input);
/// A key's character and modifiers.
NSEvent keyEvent(Input& input);
void press(Subject& subject, Input& input);

/// Takes one step after the other, up to `limit`, as long as the input lasts and the input method
/// runs; the law must hold after each, and for one more key.
template <class AnyStep>
void takeSteps(Subject& subject, const Input& input, int limit, AnyStep step) {
  for (; limit > 0 && !input.empty() && !subject.ended(); --limit) {
    step();
    subject.checkLaw();
  }
  if (!subject.ended()) subject.press(NSEvent{NSEventType::KeyDown, 0, 0, u" ", nullptr});
}
/// Those that the input names.
template <std::size_t size>
void takeSteps(Bytes bytes, int limit, const std::array<Step, size>& steps) {
  Subject subject;
  Input input(bytes);
  takeSteps(subject, input, limit, [&] { input.oneOf(steps)(subject, input); });
}

}  // namespace quorvane::fuzz
