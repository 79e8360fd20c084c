#pragma once
// The choice of words: sure corrections by the corrector, what dictionaries have left alone, what
// the user has taken back not made again.

#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "hosts/keyboard/LayoutWriter.h"
#include "tools/checker/Passages.h"
#include "tools/checker/Spelling.h"
#include "tools/checker/TakenBack.h"
#include "tools/checker/WordChoice.h"
#include "tools/corrections/Corrector.h"

namespace quorvane::checker {

class Corrections final : public WordChoice {
 public:
  /// `corrector` null: nothing is corrected, and offers come as the dictionary has them. `layout`
  /// is asked at each word in question, so that a switch of keyboards takes effect at once.
  Corrections(Spelling& dictionary, std::unique_ptr<corrections::Corrector> corrector,
              TakenBack takenBack, const CorrectionSwitches& switches,
              std::function<keyboard::LayoutData()> layout);

  /// From the next word on.
  void use(const CorrectionSwitches& switches);

  /// A word that comes back at once where one was replaced is taken back, and learned.
  std::optional<std::string> replacement(const TypedWord& word) override;
  std::optional<Passage> passage(const TypedWord& word) override;
  void notMade() override { last_.reset(); }
  std::vector<std::string> offers(const TypedWord& word) override;

 private:
  struct Made {
    TypedWord word;
    std::string typed;  ///< the word, or a passage that ends in it
    std::string replacement;
  };

  void followKeyboard();
  [[nodiscard]] bool exists(const std::string& spelt) const;
  corrections::Judgement judge(const TypedWord& word);
  std::optional<std::string> sureReplacement(const TypedWord& word);
  std::vector<std::string> merged(std::vector<corrections::Candidate> scored,
                                  const std::vector<std::string>& guesses,
                                  const std::string& typed);
  void leave(const std::string& spelt);
  [[nodiscard]] bool isMeant(const std::string& spelt) const;

  Spelling& dictionary_;
  std::unique_ptr<corrections::Corrector> corrector_;
  TakenBack takenBack_;
  CorrectionSwitches switches_;
  Passages passages_;
  std::function<keyboard::LayoutData()> layout_;
  keyboard::LayoutData followed_;
  std::optional<Made> last_;
  std::optional<Made> undone_;       ///< was `last_`, and the word just typed stands there again
  std::map<std::string, int> left_;  ///< unknown words that stayed as they were typed
};

}  // namespace quorvane::checker
