#pragma once
// Every command that has an item of the Input Menu: the tag that the item bears, and the command id
// that the dispatch and the key shortcuts know it by. Items of the submenus that are made of files
// aren't here: their tag and their command id are one number, 1001 to 3999.

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/MacTypes.h"

namespace quorvane {

enum class MenuConversion {
  BothWays,
  ToTagOnly,  ///< the tag comes back as it is
};

struct MenuRow {
  std::int32_t tag;
  std::uint32_t commandID;
  std::string_view item;
  MenuConversion converts = MenuConversion::BothWays;
};

inline constexpr std::array<MenuRow, 43> kMenuTable{{
    {1, "CkSp"_4cc, "check spelling"},
    {2, "CkSe"_4cc, "check grammar"},
    {3, "CkSb"_4cc, "check spelling and grammar"},
    {4, "CkAl"_4cc, "check all"},
    {5, "Tsia"_4cc, "toggle: interactive spelling"},
    {6, "Tgia"_4cc, "toggle: interactive grammar"},
    {7, "Tacr"_4cc, "toggle: automatic corrections"},
    {8, "Taty"_4cc, "toggle: abbreviations"},
    {9, "Tsas"_4cc, "toggle: an option of interactive spelling"},
    {10, "Tgss"_4cc, "toggle: an option of interactive grammar"},
    {11, "Tgpm"_4cc, "toggle: the text position is published"},
    {12, "Tgso"_4cc, "toggle: sound"},
    {13, "ShSg"_4cc, "show suggestions"},
    {14, "LkUp"_4cc, "dictionary look-up"},
    {15, "CkRd"_4cc, "check statistics"},
    {16, "Grph"_4cc, "graph statistics"},
    {17, "GtWr"_4cc, "writing rules"},
    {18, "GtMs"_4cc, "preferences"},
    {19, "GtHp"_4cc, "help"},
    {20, "GtAb"_4cc, "about"},
    {21, "QtOp"_4cc, "open or quit the main application"},
    {32, "MWSt"_4cc, "head of Writing Style", MenuConversion::ToTagOnly},
    {33, "SpLg"_4cc, "head of Spelling"},
    {34, "ATyp"_4cc, "head of AutoType", MenuConversion::ToTagOnly},
    {35, "TxTL"_4cc, "head of the text tools"},
    {104, "CkMk"_4cc, "check all with automatic mark-up"},
    {111, "Timc"_4cc, "toggle: interactive checking in this application"},
    {120, "FmTL"_4cc, "text tools: head of Format"},
    {121, "CvTL"_4cc, "text tools: head of Convert"},
    {122, "InTL"_4cc, "text tools: head of Insert"},
    {125, "FMPr"_4cc, "format: paragraphs"},
    {126, "RMsp"_4cc, "format: spaces"},
    {127, "ReMQ"_4cc, "format: quote marks of mail"},
    {128, "AlCp"_4cc, "convert: capitals"},
    {129, "LwCs"_4cc, "convert: lower case"},
    {130, "DaTs"_4cc, "insert: short date"},
    {131, "DaTl"_4cc, "insert: long date"},
    {132, "DaTa"_4cc, "insert: abbreviated date"},
    {133, "DTTs"_4cc, "insert: short date and time"},
    {134, "DTTl"_4cc, "insert: long date and time"},
    {135, "DTTa"_4cc, "insert: abbreviated date and time"},
    {136, "DTTu"_4cc, "insert: date and time in UTC"},
    {144, "Tacy"_4cc, "toggle: word completion"},
}};

/// What the table doesn't hold comes back unchanged, in both.
std::int32_t Convert_CommandIDToTag(std::uint32_t commandID);
std::uint32_t Convert_TagToCommandID(std::int32_t tag);

}  // namespace quorvane
