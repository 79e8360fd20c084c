#pragma once
// The engine of word completion: from the letters typed so far to the words for the candidates
// panel, and from a word to what is shown beside it. All word data is loaded once, before the run
// loop starts, and never changes: a change to a data file takes effect at the next start.

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "src/base/Instance.h"
#include "src/completion/Cached.h"
#include "src/completion/PhonexEncoder.h"
#include "src/completion/PhonexTable.h"
#include "src/completion/WordTable.h"

namespace quorvane {

class ConversionEngine {
 public:
  using Words = std::vector<std::u16string>;
  /// What the user types, in lower case, and the text offered for it.
  using Substitutions = std::unordered_map<std::u16string, std::u16string>;

  /// The one engine of the process, made and loaded by the first call. Throws std::runtime_error,
  /// whose message says what to do, where the word list is missing or broken. Every other file that
  /// is missing or malformed only leaves its part empty.
  static ConversionEngine& sharedEngine(Instance& instance);

  struct PreparedData {
    Cached<WordTable> wordsWithFrequencyAndTranslation;
    Substitutions substitutions;
    Cached<PhonexTable> phonexEncoded;
    PhonexEncoder phonexEncoder;
  };

  /// The word list, then the parts in their order.
  static PreparedData loadPreparedData(Instance& instance);
  static void loadTrie(Instance& instance);
  static Cached<WordTable> getWordsWithFrequencyAndTranslation(Instance& instance);
  static Substitutions getUserDefinedSubstitutions(Instance& instance);
  static Cached<PhonexTable> getPhonexEncodedWords(Instance& instance);
  static PhonexEncoder getPhonexEncoder(Instance& instance);

  /// Loads everything; throws as above.
  explicit ConversionEngine(Instance& instance)
      : instance_(instance), data_(loadPreparedData(instance)) {}

  /// What was typed, a substitution, then words that begin so, the most frequent first; corrections
  /// where there are none. At most 51, no text twice, the user's capitals kept. Empty for no text.
  /// Throws std::invalid_argument for text that has no UTF-8 form.
  Words getCandidates(const std::u16string& typedText);
  /// The words of the list that begin with `prefix`, in the list's own order. Throws as above.
  Words wordsStartsWith(const std::u16string& prefix);
  /// By falling frequency; words of equal frequency keep their order. Frequencies are compared by
  /// their 32-bit difference, which wraps around.
  Words sortWordsByFrequency(const Words& words);

  /// Corrections of a text in lower case that no word begins with: guesses of the spell checker,
  /// then words that sound alike.
  Words getSuggestionOfSpellChecker(const std::u16string& text);
  /// The phonetic code; "undefined" where the script is missing or broken.
  std::u16string phonexEncode(const std::u16string& word);
  /// The words at a distance below 4 from `inputText`, nearest first, as UTF-8. Words of equal
  /// distance keep their order.
  std::vector<std::string_view> sortByDamerauLevenshteinDistance(TextList words,
                                                                 std::u16string_view inputText);
  /// The first `range` elements, or all there are.
  template <class Element>
  static std::span<const Element> subarrayWithRang(const std::vector<Element>& array,
                                                   std::size_t range) {
    return std::span(array).first(std::min(range, array.size()));
  }

  /// Empty for an unknown word. The word is looked up as it is given.
  Words getTranslations(const std::u16string& word);
  /// Empty for a word of up to 3 characters, and where there is none.
  std::u16string getPhoneticSymbolOfWord(const std::u16string& word);
  /// "[symbol]" and the translations, a line each; empty without a translation.
  std::u16string getAnnotation(const std::u16string& word);

 private:
  Words onesToOffer(Words words);
  Words wordsByFrequency(const std::u16string& prefix);
  std::int32_t frequencyOf(const std::u16string& word);
  TextList annotationOf(const std::u16string& word);
  TextList soundAlikesOf(const std::u16string& text);
  std::u16string decoded(std::string_view utf8);
  std::u16string lowercaseString(const std::u16string& text);

  Instance& instance_;
  PreparedData data_;
};

}  // namespace quorvane
