#include "hosts/desktop/SpellChecker.h"

#include <enchant.h>
#include <unicode/uscript.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <span>
#include <string>

#include "hosts/icu/IcuTextEncoding.h"
#include "src/base/Text.h"

namespace quorvane::desktop {
namespace {

constexpr std::size_t kLongestWord = 100;
/// Behind so many Aspell goes on with words that have hardly a letter of it.
constexpr std::size_t kMostGuesses = 15;

struct BrokerDeleter {
  void operator()(EnchantBroker* broker) const { enchant_broker_free(broker); }
};

struct DictionaryDeleter {
  EnchantBroker* broker;
  void operator()(EnchantDict* dictionary) const { enchant_broker_free_dict(broker, dictionary); }
};
using Dictionary = std::unique_ptr<EnchantDict, DictionaryDeleter>;

/// None where it isn't text that a dictionary could hold.
std::optional<std::u16string> wordIn(const std::u16string& text, NSRange range) {
  if (range.location > text.size() || range.length > text.size() - range.location) return {};
  if (range.length == 0 || range.length > kLongestWord) return {};
  std::u16string word = text.substr(range.location, range.length);
  const auto isControl = [](char16_t unit) { return unit < u' ' || unit == u'\x7F'; };
  if (std::ranges::any_of(word, isControl)) return {};
  return word;
}

/// Of its first letter.
UScriptCode scriptOf(const std::u16string& text) {
  UErrorCode error = U_ZERO_ERROR;
  for (std::size_t at = 0; at < text.size();) {
    UChar32 character = 0;
    U16_NEXT(text.data(), at, text.size(), character);
    const UScriptCode script = uscript_getScript(character, &error);
    if (script > USCRIPT_INHERITED) return script;
  }
  return USCRIPT_COMMON;
}

}  // namespace

class SpellChecker::Dictionaries {
 public:
  std::vector<std::u16string> suggestions(const std::string& word, const std::string& language) {
    EnchantDict* const dictionary = find(language == "en" ? "en_US" : language);
    if (dictionary == nullptr) return {};
    std::size_t count = 0;
    char** const list =
        enchant_dict_suggest(dictionary, word.data(), static_cast<ssize_t>(word.size()), &count);
    if (list == nullptr) return {};
    std::vector<std::u16string> guesses;
    for (const char* guess : std::span(list, std::min(count, kMostGuesses))) {
      const std::span bytes(reinterpret_cast<const std::uint8_t*>(guess), std::strlen(guess));
      if (auto text = encoding_.initWithData(bytes, NSStringEncoding::UTF8)) {
        guesses.push_back(*std::move(text));
      }
    }
    enchant_dict_free_string_list(dictionary, list);
    return guesses;
  }

 private:
  /// Null where there is none, which is remembered, too.
  EnchantDict* find(const std::string& tag) {
    if (broker_ == nullptr || tag.empty()) return nullptr;
    const auto known = loaded_.find(tag);
    if (known != loaded_.end()) return known->second.get();
    // Aspell suggests in under a millisecond, Hunspell in ten to forty, and somebody is typing.
    enchant_broker_set_ordering(broker_.get(), tag.c_str(), "aspell,hunspell");
    Dictionary dictionary(enchant_broker_request_dict(broker_.get(), tag.c_str()),
                          DictionaryDeleter{broker_.get()});
    return loaded_.emplace(tag, std::move(dictionary)).first->second.get();
  }

  std::unique_ptr<EnchantBroker, BrokerDeleter> broker_{enchant_broker_init()};
  std::map<std::string, Dictionary> loaded_;  // go before their broker
  IcuTextEncoding encoding_;
};

SpellChecker::SpellChecker() = default;
SpellChecker::~SpellChecker() = default;

std::vector<std::u16string> SpellChecker::guessesForWordRange(NSRange range,
                                                              const std::u16string& text,
                                                              std::string_view language,
                                                              std::int64_t /*documentTag*/) {
  const auto word = wordIn(text, range);
  if (!word) return {};
  if (dictionaries_ == nullptr) dictionaries_ = std::make_unique<Dictionaries>();
  auto guesses = dictionaries_->suggestions(toUtf8(*word), std::string(language));
  std::erase_if(guesses, [script = scriptOf(*word)](const std::u16string& guess) {
    return scriptOf(guess) != script;
  });
  return guesses;
}

}  // namespace quorvane::desktop
