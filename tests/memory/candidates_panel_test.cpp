// The candidates panel as the framework promises it: when it tells of its highlight, what it shows,
// and where it stands.

#include <gtest/gtest.h>

#include <stdexcept>

#include "hosts/memory/MemoryHost.h"

namespace quorvane::field {
namespace {

using Texts = std::vector<std::u16string>;

struct ListingController : IMKInputController {
  bool handleEvent(const NSEvent&, IMKTextInput*) override { return false; }
  void activateServer(IMKTextInput*) override {}
  void deactivateServer(IMKTextInput*) override {}
  std::uint32_t recognizedEvents(IMKTextInput*) override { return 0x6001c06; }
  Texts candidates(IMKTextInput* sender) override { return sender ? list : Texts{u"nobody"}; }
  void candidateSelectionChanged(const NSAttributedString& candidate) override {
    told.push_back(candidate.string);
    if (onChange) onChange();
  }
  void candidateSelected(const NSAttributedString& candidate) override {
    told.push_back(u"!" + candidate.string);
    throw std::runtime_error("picked");
  }

  Texts list{u"th", u"the", u"that"};
  Texts told;
  std::function<void()> onChange;
};

class CandidatesPanelTest : public testing::Test {
 protected:
  CandidatesPanelTest() {
    host.text.setController(&controller);
    host.text.focus(&document);
    make(IMKCandidatePanelType::SingleColumnScrolling);
  }
  void make(IMKCandidatePanelType type) {
    made = host.inputMethodKit.initWithServer(nullptr, type);
    panel = host.inputMethodKit.panel();
  }
  /// What the controller has been told since the last time.
  Texts told() { return std::exchange(controller.told, {}); }

  memory::MemoryHost host;
  ListingController controller;
  Document& document = host.text.addDocument();
  std::unique_ptr<IMKCandidates> made;
  CandidatesPanel* panel = nullptr;
};

TEST_F(CandidatesPanelTest, TellsOfEachNewHighlightOnce) {
  panel->updateCandidates();
  panel->moveDown(&controller);
  EXPECT_EQ(told(), Texts{}) << "hidden";
  panel->show(kIMKLocateCandidatesBelowHint);
  panel->show(kIMKLocateCandidatesBelowHint);
  panel->moveUp(&controller);
  panel->moveRight(&controller);
  EXPECT_EQ(told(), Texts{u"th"}) << "at the top, and across";
  for (int step = 0; step < 4; ++step) panel->moveDown(&controller);
  EXPECT_EQ(told(), (Texts{u"the", u"that"}));
  panel->clearSelection();
  panel->moveUp(&controller);
  panel->moveDown(&controller);
  EXPECT_EQ(told(), Texts{u"th"}) << "from no highlight forward only";
  panel->setCandidateData({u"a", u"b"});
  EXPECT_EQ(told(), Texts{u"a"}) << "a new list in a visible panel";
  panel->setCandidateData({});
  panel->moveDown(&controller);
  EXPECT_FALSE(panel->highlighted());
  host.text.focus(nullptr);
  panel->updateCandidates();
  EXPECT_EQ(panel->candidates(), Texts{}) << "nobody has the focus";
  controller.onChange = [this] {
    controller.onChange = nullptr;
    panel->setCandidateData({u"x"});
  };
  panel->setCandidateData({u"y"});
  EXPECT_EQ(told(), (Texts{u"y", u"x"})) << "what the controller changes meanwhile is told, too";
  made.reset();
  EXPECT_EQ(host.inputMethodKit.panel(), nullptr);
}

TEST_F(CandidatesPanelTest, ARowIsOneLineHighAndStandsThereWhenClosed) {
  make(IMKCandidatePanelType::SingleRowStepping);
  document.lineRectangle = {10, 16, 1, 20};
  panel->updateCandidates();
  EXPECT_EQ(panel->candidateFrame(), NSRect{}) << "before the first opening";
  panel->show(kIMKLocateCandidatesBelowHint);
  panel->hide();
  panel->setCandidateData({});
  EXPECT_EQ(panel->candidateFrame(), (NSRect{10, 0, 144, 16}));
}

TEST_F(CandidatesPanelTest, ShowsNineAndScrollsNoFurtherThanItMust) {
  controller.list.clear();
  for (char16_t letter = u'a'; letter <= u'l'; ++letter) controller.list.emplace_back(1, letter);
  panel->updateCandidates();
  panel->show(kIMKLocateCandidatesBelowHint);
  std::u16string first;
  const auto note = [&] { first += panel->shown().front(); };
  for (int step = 0; step < 11; ++step, note()) panel->moveDown(&controller);
  for (int step = 0; step < 9; ++step, note()) panel->moveUp(&controller);
  EXPECT_EQ(first, u"aaaaaaaabcdddddddddc");
  EXPECT_EQ(panel->shown().size(), 9U);
}

TEST_F(CandidatesPanelTest, PicksWhatIsThereAndStopsWhatIsThrown) {
  panel->updateCandidates();
  panel->pick(1);
  EXPECT_EQ(told(), Texts{}) << "hidden";
  panel->show(kIMKLocateCandidatesBelowHint);
  panel->pick(3);
  panel->pick(2);
  EXPECT_EQ(told(), (Texts{u"th", u"!that"}));
  EXPECT_EQ(host.text.errors(), std::vector<std::string>{"the input method threw: picked"});
}

TEST_F(CandidatesPanelTest, CancelledCompositionTakesTheMarkedTextOfItsOwnClientOnly) {
  document.setText(u"I ");
  document.setMarkedText({u"th", MarkedTextAttributes{kSelectedRawText, {0, 2}}}, {2, 0},
                         {NSNotFound, NSNotFound});
  EXPECT_EQ(document.markedAttributes()->style, kSelectedRawText);
  ListingController other;
  host.inputMethodKit.cancelComposition(other);
  EXPECT_EQ(document.text(), u"I th");
  host.inputMethodKit.cancelComposition(controller);
  document.select({0, 2});
  host.inputMethodKit.cancelComposition(controller);
  document.insertText(u"", {NSNotFound, NSNotFound});
  EXPECT_EQ(document.text(), u"I ");
  EXPECT_EQ(document.selection(), (NSRange{0, 2}));
  document.setMarkedText(u"a", {1, 0}, {2, 0});
  host.text.focus(nullptr);
  EXPECT_FALSE(document.markedRange());
  EXPECT_EQ(document.text(), u"I a") << "plain text without the focus";
}

}  // namespace
}  // namespace quorvane::field
