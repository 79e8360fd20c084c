#pragma once
// The user's own file: { "btw": "by the way", ... }, nothing but strings in one object.

#include <string>
#include <unordered_map>
#include <utility>

#include "src/completion/JSONShape.h"
#include "src/completion/Utf8.h"

namespace quorvane {

class SubstitutionsReader : public JSONShape {
 public:
  explicit SubstitutionsReader(TextEncoding& encoding) : JSONShape("{"), encoding_(encoding) {}

  /// To be asked once.
  [[nodiscard]] std::unordered_map<std::u16string, std::u16string> takeSubstitutions() {
    return std::move(substitutions_);
  }
  /// Is the whole of it of that shape?
  [[nodiscard]] bool isWellFormed() const { return wellFormed_; }
  /// The first key whose value is no string; empty where there isn't even an object.
  [[nodiscard]] const std::u16string& offender() const { return offender_; }

 private:
  void keyAt(std::size_t /*depth*/, std::string_view text) override {
    key_ = fromUtf8(encoding_, text);
  }
  void stringAt(std::size_t /*depth*/, std::string_view text) override {
    substitutions_.insert_or_assign(key_, fromUtf8(encoding_, text));
  }
  void foreignAt(std::size_t /*depth*/) override {
    if (wellFormed_) offender_ = key_;
    wellFormed_ = false;
  }

  TextEncoding& encoding_;
  std::unordered_map<std::u16string, std::u16string> substitutions_;
  std::u16string key_;
  bool wellFormed_ = true;
  std::u16string offender_;
};

}  // namespace quorvane
