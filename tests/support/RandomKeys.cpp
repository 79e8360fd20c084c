#include "tests/support/RandomKeys.h"

#include <array>
#include <string_view>

namespace quorvane::model {
namespace {

constexpr std::u16string_view kLetters = u"etaoinshrdlucmfwypvbgkETAIS&";
constexpr std::u16string_view kMarks = u".,;:!?'\"-()/0123456789";
constexpr std::u16string_view kPicked = u"рʼ0123456789--------\"\"\"\"''''\t\x1f\x01\x1b a";
constexpr std::array<char16_t, 16> kCodes{13, 13, 8, 8, 8, 28, 28, 29, 3, 9, 9, 27, 127, 11, 12, 0};
const std::array<std::u16string, 15> kOddities{
    u"\x1e",   u"\x1f",   u"\x01",   u"\x04",   u"é", u"“",  u"\U0001F600", u"р",
    u"\xD83D", u"\xDE00", u"\xF704", u"\x0085", u"",  u"ab", u"\x0007"};
constexpr std::array<std::uint32_t, 6> kModifiers{
    NSEventModifierFlagCapsLock, NSEventModifierFlagShift,   NSEventModifierFlagControl,
    NSEventModifierFlagOption,   NSEventModifierFlagCommand, NSEventModifierFlagFunction};

std::u16string one(char16_t unit) { return {unit}; }

std::u16string randomCharacters(Random& random, Habit habit) {
  const std::uint32_t dice = random.below(1000);
  if (habit == Habit::OneWord) return one(dice < 30 ? u'\x1c' : random.oneOf(kLetters));
  if (habit == Habit::Picking)
    return one(dice < 800 ? random.oneOf(kPicked) : random.oneOf(kLetters));
  if (habit == Habit::Sentences) {
    if (dice < 150) return one(u' ');
    if (dice < 190) return one(dice < 175 ? u'.' : random.oneOf(kMarks));
    return one(dice < 205 ? u'\x1c' : random.oneOf(kLetters));
  }
  if (dice < 500) return one(random.oneOf(kLetters));
  if (dice < 640) return one(u' ');
  if (dice < 750) return one(random.oneOf(kMarks));
  return dice < 930 ? one(random.oneOf(kCodes)) : random.oneOf(kOddities);
}

std::uint32_t randomModifiers(Random& random, Habit habit) {
  if (habit == Habit::Picking) {
    return random.chance(400) ? 0 : NSEventModifierFlagShift << random.below(4);
  }
  if (!random.chance(habit == Habit::Mixed ? 150 : 2)) {
    return random.chance(100) ? NSEventModifierFlagShift : 0;
  }
  if (random.chance(300)) return NSEventModifierFlagCommand;
  std::uint32_t flags = 0;
  for (const std::uint32_t flag : kModifiers) flags |= random.chance(300) ? flag : 0;
  return flags;
}

NSEvent oddKey(Random& random) {
  NSEvent event;
  event.modifierFlags = random.word();
  event.keyCode = static_cast<std::uint16_t>(random.below(0x10000));
  for (std::uint32_t left = random.below(4); left > 0; --left) {
    event.characters += static_cast<char16_t>(random.below(0x10000));
  }
  return event;
}

}  // namespace

NSEvent randomKey(Random& random, Habit habit) {
  if (habit == Habit::Anything) {
    if (random.chance(250)) return oddKey(random);
    habit = Habit::Mixed;
  }
  NSEvent event;
  event.keyCode = static_cast<std::uint16_t>(random.below(130));
  event.modifierFlags = randomModifiers(random, habit);
  if (random.chance(40)) {
    event.type = NSEventType::FlagsChanged;
    return event;
  }
  if (random.chance(habit == Habit::Mixed ? 150 : 20)) event.type = NSEventType::KeyUp;
  const bool commandKey = event.modifierFlags == NSEventModifierFlagCommand && random.chance(500);
  event.characters = commandKey ? one(random.oneOf(std::u16string_view(u"aacxvV\t")))
                                : randomCharacters(random, habit);
  return event;
}

std::u16string randomText(Random& random) {
  static const std::array<std::u16string, 6> kPieces{u"e", u" ", u"é", u"“", u"\U0001F600", u"the"};
  std::u16string text;
  for (std::uint32_t pieces = random.below(5); pieces > 0; --pieces) text += random.oneOf(kPieces);
  return text;
}

}  // namespace quorvane::model
