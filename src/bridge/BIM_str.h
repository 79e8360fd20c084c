#pragma once
// The string and memory routines that the whole input method shares. Text is Mac OS Roman bytes: C
// strings end in 0, Pascal strings begin with their length. Where no size is given, the caller's
// buffer must hold the result.
//
// Yes-or-no tests give -1 for yes, save Numeric and isuppercase, which give 1. Oddities that look
// like mistakes are relied on.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "src/base/Instance.h"

namespace quorvane {

using Str255 = std::array<std::uint8_t, 256>;

// --- Memory --------------------------------------------------------------------------------------

/// Overlap is allowed. Both return `dst`.
void* MVEBLOCK_APPLE(void* dst, const void* src, std::uint32_t n);
void* Mem_Copy(void* dst, const void* src, std::uint32_t n);
/// `n` of 0 or less: nothing.
void CLRBLOCK(void* block, std::int32_t n);
/// 0 where equal, else -1 or 1 by the first bytes that differ.
std::int32_t CMPBLOCK(const void* a, const void* b, std::uint32_t n);
/// 0 for a null handle.
std::uint32_t Get_HandleSize(const Handle& h);
void SetTheHandleSize(const Handle& h, std::uint32_t n);
/// Null where `h` or its content is null, or without memory.
Handle CopyHandleToNewHandle(const Handle& h);
/// Null without memory.
Handle CopyPtrToNewHandle(const void* ptr, std::uint32_t n);
/// Unlocks it, detaches it from its resource, frees it. Nothing for a null handle or content.
void Disposblock(Instance& instance, const Handle& h);

// --- Pascal strings ------------------------------------------------------------------------------

std::uint8_t* Pstrcpy(std::uint8_t* dst, const std::uint8_t* src);
/// The length byte wraps at 256; the text is appended all the same.
std::uint8_t* Pstrcat(std::uint8_t* dst, const std::uint8_t* src);
/// -1 if equal. An empty `b` equals nothing, not even an empty `a`.
std::int32_t Pstrcmp(const std::uint8_t* a, const std::uint8_t* b);
std::uint8_t* PtoCstrCpy(std::uint8_t* dst, const std::uint8_t* src);
/// In place. A length of 128 or more leaves an empty string.
std::uint8_t* PtoCstr(std::uint8_t* s);
/// In place, at most 255 characters.
std::uint8_t* CtoPstr(std::uint8_t* s);
/// Doesn't copy: an empty source gives length 0, any other length 1 with a 0 as the only character.
void CtoPstrCpy(std::uint8_t* dst, const std::uint8_t* src);

// --- C strings -----------------------------------------------------------------------------------

std::uint32_t strnglen(const std::uint8_t* s);
/// The new length of `dst`.
std::uint32_t strngcat(std::uint8_t* dst, const std::uint8_t* src);
std::uint32_t strcatc(std::uint8_t* s, std::uint8_t ch);
/// The length of `src`.
std::uint32_t scrypcpy(std::uint8_t* dst, const std::uint8_t* src);
/// Copies at most `n` bytes, terminator included, and returns their number minus 1. A string of `n`
/// bytes or more loses its terminator. `n` below 1: 0.
std::int32_t strngcpy(std::uint8_t* dst, const std::uint8_t* src, std::int32_t n);
std::int32_t strngcpylow(std::uint8_t* dst, const std::uint8_t* src, std::int32_t n);
/// The difference of the first bytes that differ, or 0.
std::int32_t STRCMPAR(const std::uint8_t* a, const std::uint8_t* b);
std::int32_t STRCMPARNOCASE(const std::uint8_t* a, const std::uint8_t* b);
/// Reverses in place; returns the length.
std::uint32_t strrev(std::uint8_t* s);

// --- Characters ----------------------------------------------------------------------------------

/// Only 65 to 90 change; the result is cut to a byte.
std::uint8_t mklower(std::uint32_t ch);
std::int32_t isuppercase(std::uint32_t ch);
std::int32_t Numeric(std::uint32_t ch);
/// `sorted` is in ascending byte order: the search ends at the first greater byte.
std::int32_t STRLSCHR(const std::uint8_t* sorted, std::uint8_t ch);
std::int32_t Vowelchk(std::uint8_t ch);
std::int32_t Clslook1(std::uint8_t ch);
/// 1, 2, 3 for an opening parenthesis, bracket, brace; else 0.
std::int32_t Opunc(std::uint8_t ch);
std::int32_t Clpunc(std::uint8_t ch);

// --- Numbers -------------------------------------------------------------------------------------

/// Decimal, despite its name. Bytes that are no digits are skipped; wraps at 32 bits.
std::int32_t xtol(const std::uint8_t* s, std::uint32_t n);
/// At least one digit and at most `size`, the lower ones; sign and terminator come on top. Returns
/// the length.
std::int32_t dectostr(std::int64_t value, std::int32_t size, std::uint8_t* buf);
/// "$" and the digits of the lower 28 bits, at least two; asterisks where more than `size` - 1
/// digits would be needed. Returns the length.
std::int32_t hextostr(std::uint64_t value, std::int32_t size, std::uint8_t* buf);

// --- Resources -----------------------------------------------------------------------------------

/// The `index`-th Pascal string, from 1, of resource 'QSTR' `id`; 0 or less gives the first. Empty
/// where there is none.
std::optional<Str255> Get1IndString(Instance& instance, std::int16_t id, std::int32_t index);
/// Pascal and C copy of it, up to 256 bytes; the length. Empty on failure.
std::uint32_t RDPSTRG(Instance& instance, std::uint8_t* dst, std::int16_t id, std::int32_t index);
std::uint32_t RDCSTRG(Instance& instance, std::uint8_t* dst, std::int16_t id, std::int32_t index);

// --- Text ----------------------------------------------------------------------------------------

/// Takes a plural or possessive ending off, in place. -1 if the word was cut.
std::int32_t Singular(std::uint8_t* word);
/// Mac OS Roman to UTF-16, little-endian. Empty where it can't be converted.
std::optional<CFData> Convert_ASCIITo_Unicode(Instance& instance, const std::uint8_t* text,
                                              std::uint32_t length);
/// The same as a string.
std::optional<std::u16string> textFromRoman(Instance& instance, std::string_view roman);

}  // namespace quorvane
