#pragma once
// Whether what stands before a word is another language than English.

#include <cstdint>
#include <span>

namespace quorvane::checker {

/// True where one of the last four words is a common little word of French, German, Italian,
/// Portuguese or Spanish, or has a Latin letter beyond ASCII.
bool endsInForeignText(std::span<const std::uint8_t> text);

}  // namespace quorvane::checker
