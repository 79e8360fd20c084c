#pragma once
// What the world around the input method may do at any moment, also in the middle of a key: the
// main application, other processes, the system. One action is a byte that names it and its
// arguments.

#include "fuzz/Input.h"
#include "fuzz/Subject.h"

namespace quorvane::fuzz {

void worldAction(Subject& subject, Input& input);
/// All that `script` holds, up to a few.
void worldActions(Subject& subject, Bytes script);
/// Runs `script` just before the n-th call from now that the input method makes on the platform.
void planAtCall(Subject& subject, std::uint64_t n, Bytes script);

/// One of the segments' keys.
std::uint32_t segmentKey(Input& input);
/// Makes the segment anew: of a usual or any other size, to the byte or in whole pages, refused, a
/// stranger's.
void replaceSegment(Subject& subject, std::uint32_t key, Input& input);
/// A key's character and modifiers.
NSEvent keyEvent(Input& input);

}  // namespace quorvane::fuzz
