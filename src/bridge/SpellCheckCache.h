#pragma once
// The word that the main application has checked last, and what it suggests for it: a cache of one
// entry, asked by its word. The record stays attached from the first reading on, so that it may be
// that of a main application that has gone; the word says whether it still fits.
//
// Each reading is of a copy, which the other process can't change any more.

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "src/base/Instance.h"

namespace quorvane {

struct SpellCheckState {
  std::uint8_t* OPENGlobalTool_SpellCPtr = nullptr;  ///< the attachment; null: detached
  std::uint8_t* GlobalTool_SpellCPtr = nullptr;      ///< the attachment last seen
};

/// What do_PlaceSuggestionStr leaves as it is.
inline constexpr std::size_t kLongestSuggestionLine = 1224;

/// Null where there is no record.
std::uint8_t* GetTool_SpellCPtr(Instance& instance);
void CloseToolSpellCheckRecPtr(Instance& instance, const void* address);

/// The number of suggestions as the record has it, which may be larger than the 24 that there is
/// room for; 0 where the word is another one. `out` may be
/// null, and is filled as far as it goes. `mode` 0: the suggestions one behind the other, each with
/// a 0 behind it unless it fills its slot; 1: the last one, " <OR> " and the word; else nothing.
std::uint32_t GET_LAST_SPELLCHECK(Instance& instance, std::string_view word,
                                  std::span<std::uint8_t> out, std::uint32_t mode);
/// None where the word is another one or has no suggestions.
std::optional<std::vector<std::u16string>> GET_LAST_SPELLCHECK_ARRY(Instance& instance,
                                                                    std::u16string_view word);
/// Puts the word behind the C string in `line`, as far as it fits. The new length; 0 for no word.
std::uint32_t do_PlaceSuggestionStr(std::string_view word, std::span<std::uint8_t> line);
/// Makes the tool record the one that is read here, unless one is attached.
std::uint8_t* DO_GetToolSpellCheckRecordPtr(Instance& instance);

}  // namespace quorvane
