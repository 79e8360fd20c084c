// Several spell checkers as one.

#include <algorithm>
#include <array>
#include <unordered_set>

#include "tools/checker/Spelling.h"

namespace quorvane::checker {

namespace {

constexpr std::array kEnglish{"en_US", "en_GB", "en_AU", "en_CA", "en_ZA"};

constexpr std::size_t kMostKept = 4096;

class Dictionaries : public Spelling {
 public:
  explicit Dictionaries(std::unique_ptr<Spelling> first) { add(std::move(first)); }

  void add(std::unique_ptr<Spelling> spelling) {
    if (spelling != nullptr) spellings_.push_back(std::move(spelling));
  }
  bool accepts(const std::string& word) override {
    if (accepted_.contains(word)) return true;
    const auto accepts = [&](const auto& spelling) { return spelling->accepts(word); };
    if (!std::ranges::any_of(spellings_, accepts)) return false;
    if (accepted_.size() >= kMostKept) accepted_.clear();
    accepted_.insert(word);
    return true;
  }
  std::vector<std::string> suggestions(const std::string& word) override {
    return spellings_.front()->suggestions(word);
  }

 private:
  std::vector<std::unique_ptr<Spelling>> spellings_;
  std::unordered_set<std::string> accepted_;  ///< of late; what isn't accepted may be taught
};

}  // namespace

bool isEnglish(const std::string& tag) { return tag == "en" || tag.starts_with("en_"); }

std::unique_ptr<Spelling> openDictionaries(const std::string& tag) {
  auto first = openEnchant(tag);
  if (first == nullptr) return nullptr;
  auto all = std::make_unique<Dictionaries>(std::move(first));
  for (const char* const other : kEnglish) {
    if (isEnglish(tag) && other != tag) all->add(openEnchant(other));
  }
  return all;
}

}  // namespace quorvane::checker
