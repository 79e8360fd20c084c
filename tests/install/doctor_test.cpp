// What is named where a link of the chain is broken.

#include <gtest/gtest.h>

#include "tools/doctor/Checks.h"

namespace quorvane::doctor {
namespace {

using Names = std::vector<std::string>;

Facts goodFacts() {
  const Variables variables{{"GTK_IM_MODULE", "ibus"},
                            {"QT_IM_MODULE", "ibus"},
                            {"XMODIFIERS", "@im=ibus"},
                            {"IBUS_ENABLE_SYNC_MODE", "true"}};
  Facts facts;
  facts.component = {"/c/quorvane.xml", "/b/quorvane", true};
  facts.daemon = {10, true, true, "quorvane", "unix:path=/d"};
  facts.inIBusList = true;
  facts.shell = variables;
  facts.session = variables;
  facts.servers = {11};
  facts.mainApplication = 12;
  facts.segments = {{880, 376, 376, 1000}, {893, 400, 400, 1000}};
  facts.user = 1000;
  facts.hasDictionary = true;
  facts.layout = "us";
  facts.hasLayout = true;
  return facts;
}

/// Each bad one, which must say what is to be done.
Names badOnes(const Facts& facts) {
  Names names;
  for (const Finding& each : examine(facts)) {
    EXPECT_EQ(each.remedy.empty(), each.state != State::Bad) << each.check;
    if (each.state == State::Bad) names.push_back(each.check);
  }
  return names;
}

TEST(Doctor, NamesWhatIsBrokenAndNothingElse) {
  struct Broken {
    const char* how;
    void (*spoil)(Facts& facts);
    Names named;
  };
  const std::vector<Broken> systems{
      {"not installed", [](Facts& f) { f.component = {}; }, {"component"}},
      {"program gone", [](Facts& f) { f.component.programRuns = false; }, {"component"}},
      {"no daemon",
       [](Facts& f) { f.daemon = {}, f.session.reset(), f.servers = {}; },
       {"daemon", "server"}},
      {"daemon stopped", [](Facts& f) { f.daemon.answers = false; }, {"daemon"}},
      {"shell of an earlier daemon",
       [](Facts& f) { f.shell["IBUS_ADDRESS"] = "unix:path=/old"; },
       {"daemon"}},
      {"stale list of engines", [](Facts& f) { f.daemon.knowsEngine = false; }, {"engine known"}},
      {"not set up", [](Facts& f) { f.inIBusList = false; }, {"engine listed"}},
      {"IBus without settings", [](Facts& f) { f.inIBusList.reset(); }, {"engine listed"}},
      {"another one in use", [](Facts& f) { f.daemon.engine = "mozc"; }, {"engine selected"}},
      {"shell without GTK", [](Facts& f) { f.shell.erase("GTK_IM_MODULE"); }, {"toolkits, shell"}},
      {"session of another framework",
       [](Facts& f) { f.session->at("QT_IM_MODULE") = "fcitx"; },
       {"toolkits, session"}},
      {"another framework on Wayland",
       [](Facts& f) {
         f.session = Variables{{"XDG_SESSION_TYPE", "wayland"},
                               {"GTK_IM_MODULE", "xim"},
                               {"IBUS_ENABLE_SYNC_MODE", "true"}};
       },
       {"toolkits, session"}},
      {"async mode", [](Facts& f) { f.session->erase("IBUS_ENABLE_SYNC_MODE"); }, {"sync mode"}},
      {"sync mode of Qt, too",
       [](Facts& f) { f.session->at("IBUS_ENABLE_SYNC_MODE") = "1"; },
       {"sync mode"}},
      {"server gone", [](Facts& f) { f.servers = {}; }, {"server"}},
      {"two servers", [](Facts& f) { f.servers.push_back(13); }, {"server"}},
      {"stranger's segment", [](Facts& f) { f.segments[1].owner = 1001; }, {"segments"}},
      {"segment of another make", [](Facts& f) { f.segments[0].size = 8; }, {"segments"}},
      {"segments gone", [](Facts& f) { f.segments = {}; }, {"segments"}},
      {"main application gone", [](Facts& f) { f.mainApplication = 0; }, {"main application"}},
      {"main application unusable",
       [](Facts& f) { f.mainApplication = 0, f.launchFault = "no such folder"; },
       {"main application"}},
      {"no dictionary", [](Facts& f) { f.hasDictionary = false; }, {"dictionary"}},
      {"no words", [](Facts& f) { f.missingData = {"/d/phonex.js"}; }, {"word data"}},
      {"no such layout", [](Facts& f) { f.hasLayout = false; }, {"keyboard layout"}}};
  EXPECT_TRUE(isAllWell(examine(goodFacts())));
  for (const Broken& system : systems) {
    Facts facts = goodFacts();
    system.spoil(facts);
    EXPECT_EQ(badOnes(facts), system.named) << system.how;
    EXPECT_FALSE(isAllWell(examine(facts))) << system.how;
  }
}

TEST(Doctor, GnomeHasItsOwnListAndNeedsNoVariables) {
  Facts facts = goodFacts();
  facts.shell = {{"XDG_CURRENT_DESKTOP", "ubuntu:GNOME"}, {"IBUS_ENABLE_SYNC_MODE", "true"}};
  facts.session = facts.shell;
  facts.inIBusList = false;
  facts.inGnomeList = true;
  EXPECT_TRUE(isAllWell(examine(facts)));
  facts.inGnomeList = false;
  EXPECT_EQ(badOnes(facts), Names{"engine listed"});
}

TEST(Doctor, WhatOthersCallThingsStaysText) {
  const std::vector<Finding> findings{{"x", State::Bad, "a\"\\\x1b[2J\nb\xff", "c"}};
  EXPECT_EQ(asJSON(findings).find('\x1b'), std::string::npos);
  EXPECT_NE(asJSON(findings).find(R"("a\"\\?[2J b)"), std::string::npos) << asJSON(findings);
  EXPECT_EQ(asText(findings).find('\x1b'), std::string::npos);
}

}  // namespace
}  // namespace quorvane::doctor
