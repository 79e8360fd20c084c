#pragma once
// Keys on a layout in memory: what the layout's bytes say, each question with its line.

#include "hosts/keyboard/Translate.h"
#include "hosts/memory/MemoryJournal.h"

namespace quorvane::memory {

class MemoryUnicodeUtilities : public UnicodeUtilities {
 public:
  explicit MemoryUnicodeUtilities(MemoryJournal& journal) : journal_(journal) {}

  OSStatus UCKeyTranslate(std::span<const std::uint8_t> keyLayout, std::uint16_t virtualKeyCode,
                          std::uint16_t keyAction, std::uint32_t modifierKeyState,
                          std::uint32_t keyboardType, std::uint32_t keyTranslateOptions,
                          std::uint32_t& deadKeyState, std::span<char16_t> unicodeString,
                          std::size_t& actualLength) override {
    const std::size_t line = journal_.call("UCKeyTranslate ", virtualKeyCode, " action ", keyAction,
                                           " modifiers ", modifierKeyState);
    return journal_.result(
        line, translator_.UCKeyTranslate(keyLayout, virtualKeyCode, keyAction, modifierKeyState,
                                         keyboardType, keyTranslateOptions, deadKeyState,
                                         unicodeString, actualLength));
  }
  std::uint32_t LMGetKbdType() override {
    journal_.count();
    return translator_.LMGetKbdType();
  }

 private:
  MemoryJournal& journal_;
  keyboard::Translator translator_;
};

}  // namespace quorvane::memory
