#pragma once
// Somebody types, opens the Input Menu and changes applications, beside a main application that
// lies, dies, stalls, answers late and closes gates. The law: at each key the typed characters of a
// document are what they would be had the key gone straight to it, and between keys nothing of them
// changes. None is lost, doubled or moved.
//
// Whatever others put into a document can be told from what was typed: fixes keep the letters that
// they replace and add marks, and the word list has nothing longer than a letter but by marks.

#include "tests/support/Input.h"

namespace quorvane::fuzz {

/// A main application that doesn't lie has taken the clipboard back in the end.
///
/// Types what `bytes` say, with or without word completion. How many keys that were.
std::uint64_t typeBesideALiar(Bytes bytes, bool completion);

}  // namespace quorvane::fuzz
