// The record of the last spell check: its three modes, its edges, and records that lie.

#include "src/bridge/SpellCheckCache.h"
#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

class SpellRecord : public BridgeTest {
 protected:
  void put(std::size_t at, std::string text, std::size_t size = 0) {
    text.append(size - std::min(size, text.size()), '\0');
    host.sharedMemory.write(app.segment(899), at,
                            {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
  }
  /// In host order, of which only the first byte is used.
  void record(std::string_view word, char number, const std::vector<std::string>& suggestions) {
    put(4, {number}, 4);
    put(8, std::string(word), 28);
    for (std::size_t i = 0; i < suggestions.size(); ++i) put(36 + 28 * i, suggestions[i], 28);
  }
  /// What `mode` makes of a buffer full of dots.
  std::string ask(std::string_view word, std::uint32_t mode, std::size_t size) {
    std::string out(size, '.');
    count = GET_LAST_SPELLCHECK(instance, word,
                                {reinterpret_cast<std::uint8_t*>(out.data()), out.size()}, mode);
    return out;
  }

  std::uint32_t count = 99;
  const std::string full = std::string(28, 'f');
};

TEST_F(SpellRecord, AnswersForItsWordInThreeModes) {
  EXPECT_EQ(ask("teh", 0, 4), "....");
  EXPECT_EQ(count, 0U);
  EXPECT_EQ(DO_GetToolSpellCheckRecordPtr(instance), nullptr);
  EXPECT_EQ(GET_LAST_SPELLCHECK_ARRY(instance, u"teh"), std::nullopt);
  EXPECT_TRUE(logged("**NO SHARED MEM") && logged("***GET_LAST_SPELLCHECK_ARRY SHARED MEM ERRR"));
  launch();
  record("teh", 4, {"the", "", full, "t\xC3\xA9"});
  EXPECT_EQ(ask("Teh", 0, 4), "....");
  EXPECT_EQ(ask("teh", 0, 40),
            "the" + std::string{0} + "." + full + "t\xC3\xA9" + std::string{0} + "...");
  EXPECT_EQ(count, 4U);
  EXPECT_EQ(ask("teh", 1, 16), "t\xC3\xA9 <OR> teh" + std::string{0} + "fff")
      << "the last one, over what the others have left";
  EXPECT_EQ(ask("teh", 2, 4), "....");
  EXPECT_EQ(std::ranges::count(host.log.lines, "QSPELL-SPELLCHECK_GUESS <private>"), 4);
  EXPECT_EQ(GET_LAST_SPELLCHECK(instance, "teh", {}, 0), 4U);
  EXPECT_EQ(host.log.lines.back(), "***GET_LAST_SPELLCHECK <private> ");
  EXPECT_EQ(GET_LAST_SPELLCHECK_ARRY(instance, u"teh"),
            (std::vector<std::u16string>{u"the", u"", std::u16string(28, u'f'), u"t\u00E9"}));
  record("teh", 0, {});
  EXPECT_EQ(GET_LAST_SPELLCHECK_ARRY(instance, u"teh"), std::nullopt);
}

TEST_F(SpellRecord, LeadsNowhereElseWhateverItSays) {
  app.segmentOptions[899].wholePages = false;
  launch();
  put(0, std::string(708, '\xFF'));
  const std::string word(28, '\xFF');
  EXPECT_EQ(ask(word, 0, 2000), std::string(24 * 28, '\xFF') + std::string(2000 - 24 * 28, '.'));
  EXPECT_EQ(count, 0xFFFFFFFFU);
  ask(word, 1, 100);
  record("teh", 24, {"the"});
  host.journal.beforeCall(1, [&] { app.vanish(); });
  EXPECT_EQ(ask("teh", 0, 4), "the" + std::string{0}) << "it stays attached";
  app.vanish();
  EXPECT_EQ(GET_LAST_SPELLCHECK_ARRY(instance, u"teh")->size(), 1U) << "what is text";
}

TEST_F(SpellRecord, ALineTakesAWordAsLongAsItIsNotTooLong) {
  std::vector<std::uint8_t> bytes(1224, 'x');
  bytes.resize(1300);
  EXPECT_EQ(do_PlaceSuggestionStr("b", bytes), 1224U);
  bytes[1223] = 0;
  EXPECT_EQ(do_PlaceSuggestionStr("", bytes), 0U);
  EXPECT_EQ(do_PlaceSuggestionStr("b", bytes), 1230U);
  bytes[0] = 0;
  EXPECT_EQ(do_PlaceSuggestionStr("b", bytes), 1U) << "nothing to choose from";
}

TEST_F(SpellRecord, MayBeTheToolRecord) {
  launch();
  EXPECT_NE(DO_GetToolSpellCheckRecordPtr(instance), nullptr);
  EXPECT_EQ(host.sharedMemory.attachments(app.segment(880)), 1U);
  EXPECT_EQ(host.sharedMemory.attachments(app.segment(899)), 0U);
}

}  // namespace
}  // namespace quorvane::test
