#pragma once
// What `phonex_encoded_words.json` says, sorted by phonetic code:
//
//     { "R213": [ "received", "rested" ], ... }
//
// A code whose value is no array has no words; elements that are no strings are left out. A code's
// later occurrence replaces the earlier one.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "src/completion/JSONShape.h"
#include "src/completion/Snapshot.h"
#include "src/completion/TextList.h"
#include "src/completion/TextPile.h"

namespace quorvane {

struct PhonexGroups {
  TextPile codes;
  TextPile words;  ///< of each code a TextList

  static constexpr FourCharCode kKind = "Phnx"_4cc;
  [[nodiscard]] PhonexGroups sorted() const;
  /// Of a sorted one.
  [[nodiscard]] std::vector<std::span<const std::uint8_t>> sections() const;
};

class PhonexGroupsReader : public JSONShape {
 public:
  explicit PhonexGroupsReader(PhonexGroups& groups) : JSONShape("{["), groups_(groups) {}

 private:
  void keyAt(std::size_t depth, std::string_view text) override;
  void stringAt(std::size_t depth, std::string_view text) override;
  void leave(std::size_t depth) override;
  void finishCode();

  PhonexGroups& groups_;
  bool inCode_ = false;
  std::string words_;
};

class PhonexTable {
 public:
  /// As the look-up, throws DamagedSnapshot.
  PhonexTable(std::unique_ptr<FileData> file, std::string_view key);

  /// Empty for an unknown code. Lives as long as the table.
  [[nodiscard]] TextList words(std::string_view code) const;

 private:
  std::unique_ptr<const Snapshot> snapshot_;
  TextArray codes_;
  TextArray words_;
};

}  // namespace quorvane
