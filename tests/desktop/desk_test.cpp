// The desk as a person sees it: in a terminal of tmux, by keys sent and the screen captured.

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <thread>

#include "hosts/marisa/SavedWordList.h"
#include "tests/support/RunningProgram.h"

namespace quorvane::tests {
namespace {

/// Words for the engine, the most frequent first.
void writeWordData(const std::filesystem::path& folder) {
  std::filesystem::create_directory(folder);
  constexpr std::array<std::string_view, 5> kWords{"account", "according", "accommodation",
                                                   "accountant", "zebra"};
  std::string table;
  int frequency = 100;
  for (const std::string_view word : kWords) {
    table += (table.empty() ? "{\"" : ",\"") + std::string(word) +
             "\":{\"frequency\":" + std::to_string(frequency--) +
             ",\"translation\":[\"about\\u001b " + std::string(word) +
             "\",\"2\",\"3\",\"4\",\"5\",\"6\"],\"ipa\":\"\"}";
  }
  std::ofstream(folder / "google_227800_words.bin") << savedWordList(kWords);
  std::ofstream(folder / "frequency_and_ipa.json") << table << '}';
}

/// A terminal of 100 x 30 with a shell in it that runs the desk and says how it ended.
class Desk {
 public:
  explicit Desk(const std::string& options) {
    writeWordData(folder_.path() / "data");
    std::ofstream(file("conf")) << "set -g status off\nset -g escape-time 0\n";
    std::ofstream(file("run")) << "cd " << folder_.path() << "\nulimit -c 0\nstty -g >before\n"
                               << "sh -c 'echo $$ >pid; exec " QUORVANE_PROGRAM " desk " << options
                               << "'\necho \"ended $?\"; stty -g >after; cat\n";
    tmux("-f " + file("conf") + " new-session -d -x 100 -y 30 'sh " + file("run") + "'");
    EXPECT_TRUE(shows("Ctrl-Q")) << screen();
  }
  ~Desk() { tmux("kill-server"); }
  Desk(const Desk&) = delete;
  Desk& operator=(const Desk&) = delete;

  std::string tmux(const std::string& command) {
    std::string line = "env -i";
    for (const std::string& variable : folder_.environment()) line += " '" + variable + "'";
    line += " XDG_CACHE_HOME=" + file("cache") + " QUORVANE_BUNDLE_DIR=" + file("data") +
            " tmux -S " + file("tmux") + " " + command;
    std::string output;
    FILE* const pipe = ::popen((line + " 2>&1").c_str(), "r");
    std::array<char, 4096> part;
    while (const std::size_t size = std::fread(part.data(), 1, part.size(), pipe)) {
      output.append(part.data(), size);
    }
    ::pclose(pipe);
    return output;
  }
  void keys(const std::string& names) { tmux("send-keys " + names); }
  void bytes(const std::string& raw) {
    std::ofstream(file("bytes")) << raw;
    tmux("load-buffer " + file("bytes") + " ';' paste-buffer -r");
  }
  std::string screen() { return tmux("capture-pane -p"); }
  /// False where the text doesn't come to stand on the screen.
  bool shows(const std::string& text) {
    return eventually([&] { return screen().find(text) != std::string::npos; });
  }
  /// The document's line `row` comes to be this text, with nothing of the panel in it.
  bool line(std::size_t row, const std::string& text) {
    return eventually([&] {
      std::istringstream lines(screen());
      std::string found;
      for (std::size_t i = 0; i <= row + 1; ++i) std::getline(lines, found);
      found.resize(std::min(found.find("\u2502"), found.size()));
      found.erase(found.find_last_not_of(' ') + 1);
      return found == ' ' + text;
    });
  }
  /// Where a text stands first: rows from the top, columns in bytes.
  std::pair<std::size_t, std::size_t> placeOf(const std::string& text) {
    std::istringstream lines(screen());
    std::string line;
    for (std::size_t row = 0; std::getline(lines, line); ++row) {
      if (line.find(text) != std::string::npos) return {row, line.find(text)};
    }
    return {};
  }
  [[nodiscard]] pid_t pid() const { return static_cast<pid_t>(std::stol(contentOf(file("pid")))); }
  void signal(int number) const { ::kill(pid(), number); }
  [[nodiscard]] std::filesystem::path runtimeFolder() const {
    return folder_.usualRuntimeFolder() / ("type-" + std::to_string(pid()));
  }
  void signalStandIn(int number) const {
    for (const auto& entry : std::filesystem::directory_iterator(runtimeFolder())) {
      if (entry.path().extension() != ".process") continue;
      const auto announced = static_cast<pid_t>(std::stol(entry.path().stem()));
      if (announced != pid()) ::kill(announced, number);
    }
  }
  bool terminalIsAsBefore() {
    return eventually([&] { return !contentOf(file("after")).empty(); }) &&
           contentOf(file("after")) == contentOf(file("before"));
  }

 private:
  [[nodiscard]] std::string file(const char* name) const { return folder_.path() / name; }

  OwnFolder folder_;
};

TEST(Desk, KeysOfACompletedWord) {
  Desk desk("--vertical --annotation");
  struct Step {
    std::string keys;
    std::vector<std::string> document;  ///< afterwards
    std::string panel;                  ///< some of it; empty: it is closed
  };
  const std::vector<Step> steps{
      {"acco", {"acco"}, "\n 1>acco "},
      {"Down", {"account"}, "1 acco          about\u241B account "},
      {"Space", {"account"}, ""},
      {"Acco Escape", {"account Acco"}, ""},
      {"Enter acco Enter", {"account Acco", "acco"}, ""},
      {"Space acc 3", {"account Acco", "acco according"}, ""},
      {"BSpace BSpace", {"account Acco", "acco accordi"}, ""},
      {"\u20AC\u00E9\U0001F426", {"account Acco", "acco accordi\u20AC\u00E9\U0001F426"}, ""},
  };
  for (const Step& step : steps) {
    SCOPED_TRACE(step.keys);
    desk.keys(step.keys);
    for (std::size_t row = 0; row + 1 < step.document.size(); ++row) {
      ASSERT_TRUE(desk.line(row, step.document[row])) << desk.screen();
    }
    ASSERT_TRUE(desk.line(step.document.size() - 1, step.document.back())) << desk.screen();
    if (step.panel.empty()) {
      EXPECT_EQ(desk.screen().find("2 account"), std::string::npos) << desk.screen();
    } else {
      EXPECT_TRUE(desk.shows(step.panel)) << desk.screen();
    }
  }
  desk.keys("Space acco");
  desk.keys("-N 12 Down");
  desk.keys("BSpace");
  EXPECT_TRUE(desk.shows(" 1 accountant ")) << "as a digit counts by now\n" << desk.screen();
  desk.signal(SIGTERM);
  EXPECT_TRUE(desk.shows("ended 143")) << desk.screen();
  EXPECT_TRUE(desk.terminalIsAsBefore());
}

TEST(Desk, RowShiftTapAndResizing) {
  Desk desk("--with-space --shift-toggle --annotation");
  desk.keys("acco Right");
  EXPECT_TRUE(desk.shows("1 acco 2>account 3 according 4")) << desk.screen();
  desk.tmux("resize-window -x 72 -y 16");
  EXPECT_TRUE(desk.shows("3 according      \u2192\u2502")) << desk.screen();
  EXPECT_TRUE(desk.shows("\n5\u2026")) << desk.screen();
  desk.tmux("resize-window -x 60 -y 10");
  EXPECT_TRUE(desk.shows("here are 60 x 10")) << desk.screen();
  desk.tmux("resize-window -x 120 -y 40");
  EXPECT_TRUE(desk.shows("1 acco 2>account")) << desk.screen();
  desk.keys("Enter F3 acco");
  EXPECT_TRUE(desk.shows("word completion: off")) << desk.screen();
  EXPECT_TRUE(desk.line(0, "account acco")) << desk.screen();
  EXPECT_EQ(desk.screen().find("1>acco"), std::string::npos) << desk.screen();
  std::string full;
  for (int i = 0; i < 8; ++i) full += "123456789 ";
  desk.keys("Enter '" + full + "12 3'");
  EXPECT_TRUE(desk.line(1, full + "12")) << desk.screen();
  EXPECT_TRUE(desk.line(2, "3")) << "the blank hangs over the edge";
  desk.bytes("\xC3\x1BOA");
  EXPECT_TRUE(desk.shows("key code 30")) << "a key behind a broken character\n" << desk.screen();
  desk.keys("C-q");
  EXPECT_TRUE(desk.shows("ended 0")) << desk.screen();
  EXPECT_TRUE(desk.terminalIsAsBefore());
}

TEST(Desk, PopupWithSuggestions) {
  Desk desk("--popup");
  const auto opensWith = [&desk](const std::string& keys) {
    desk.keys(keys);
    return desk.shows("\u250C");
  };
  desk.keys("'Teh 1,'");
  EXPECT_TRUE(desk.line(0, "Teh 1,")) << "a digit in haste is typed";
  std::this_thread::sleep_for(std::chrono::milliseconds(600));  // the first tick closes windows
  ASSERT_TRUE(opensWith("' recieve '")) << desk.screen();
  EXPECT_EQ(desk.placeOf("\u250C"), std::pair(std::size_t{2}, std::size_t{16})) << desk.screen();
  EXPECT_TRUE(desk.shows("\u2502 1 receive ")) << desk.screen();
  EXPECT_TRUE(desk.shows("window: popup")) << desk.screen();
  std::this_thread::sleep_for(std::chrono::milliseconds(600));
  desk.keys("1");
  EXPECT_TRUE(desk.line(0, "Teh 1, receive")) << desk.screen();
  EXPECT_TRUE(desk.shows("window: none")) << desk.screen();
  EXPECT_EQ(desk.screen().find("1 receive"), std::string::npos) << desk.screen();
  ASSERT_TRUE(opensWith("'recieve '")) << desk.screen();
  desk.keys("Tab");
  EXPECT_TRUE(desk.line(0, "Teh 1, receive receive")) << desk.screen();

  desk.tmux("resize-window -x 72 -y 16");
  ASSERT_TRUE(opensWith(
      "Enter Enter Enter Enter Enter Enter Enter Enter 'at the far edge of a line teh '"));
  EXPECT_EQ(desk.placeOf("\u2518").first + 1, desk.placeOf("at the far edge of a line teh").first)
      << desk.screen();
  EXPECT_TRUE(desk.shows("\u2510\u2502")) << "moved left, to the side's edge\n" << desk.screen();
  desk.signalStandIn(SIGSTOP);
  std::this_thread::sleep_for(std::chrono::milliseconds(600));
  desk.keys("12x");
  EXPECT_TRUE(desk.shows("at the far edge of a line teh 2x")) << "a digit in haste, pressed then";
  desk.signalStandIn(SIGKILL);
  EXPECT_TRUE(eventually([&] { return desk.screen().find("\u250C") == std::string::npos; }));
}

TEST(Desk, TheInputMenu) {
  Desk desk("");
  desk.keys("F9");
  EXPECT_TRUE(desk.shows("\u2502  Check While Typing               \u25B8\u2502")) << desk.screen();
  desk.keys("c c c c c Right");
  EXPECT_TRUE(desk.shows("\u2502\u2713 Complete Words ")) << desk.screen();
  EXPECT_TRUE(desk.shows("\u2502\u2713 In This Application ")) << desk.screen();
  desk.keys("Left Right C C C C Enter account");
  EXPECT_TRUE(desk.line(0, "account")) << desk.screen();
  EXPECT_EQ(desk.screen().find(">account"), std::string::npos) << desk.screen();
  desk.keys("F9");
  EXPECT_TRUE(desk.shows("Check All and Mark Up")) << desk.screen();
  desk.keys("Escape");
  desk.keys("F9 Down Down Down Down Down Right");
  EXPECT_TRUE(desk.shows("\u2502  Complete Words ")) << desk.screen();
  desk.keys("Left");
  desk.tmux("resize-window -x 72 -y 16");
  desk.keys("End");
  EXPECT_TRUE(desk.shows(" About Quorvane")) << desk.screen();
  EXPECT_TRUE(desk.shows(" Open Quorvane")) << "its title is a resource\n" << desk.screen();
  EXPECT_TRUE(desk.shows("\u25B2\u2510")) << "more above\n" << desk.screen();
  desk.keys("Home F9 Space x");
  EXPECT_TRUE(desk.line(0, "account x")) << desk.screen();
}

TEST(Desk, AChecksTextTakesThePlaceOfTheSelection) {
  Desk desk("--switches 0");
  const auto clipboard = desk.runtimeFolder() / "clipboard";
  std::ofstream(clipboard) << "mine";
  std::filesystem::last_write_time(
      clipboard, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
  desk.keys("'I recieve it. we saw goverment , I think. Go tommorow.'");
  desk.keys("F9 Enter");
  ASSERT_TRUE(desk.shows("Check All: 1 of 5")) << desk.screen();
  EXPECT_TRUE(desk.shows("\u2502 I [recieve] it. we saw")) << desk.screen();
  EXPECT_TRUE(desk.shows("\u2502 > recieve                 receive ")) << desk.screen();
  EXPECT_TRUE(desk.shows("application: in front")) << desk.screen();
  EXPECT_EQ(contentOf(clipboard), "mine") << "the copy has been read and taken back";
  desk.keys("x Escape '!'");
  EXPECT_TRUE(desk.line(0, "I recieve it. we saw goverment , I think. Go tommorow.!"))
      << "the window has had x; the caret is where it was\n"
      << desk.screen();

  desk.keys("BSpace F9 Enter");
  ASSERT_TRUE(desk.shows("Check All: 1 of 5")) << desk.screen();
  desk.keys("Enter s");
  EXPECT_TRUE(desk.shows("- we                      left as it is")) << desk.screen();
  desk.keys("a '!'");
  EXPECT_TRUE(desk.line(0, "I receive it. we saw government, I think. Go tomorrow.!"))
      << desk.screen();
  EXPECT_TRUE(eventually([&] { return contentOf(clipboard) == "mine"; }));

  desk.keys("' recieve' F9 c c c c Enter");
  ASSERT_TRUE(desk.shows("Check All and Mark Up: 2 found")) << desk.screen();
  desk.keys("Enter");
  EXPECT_TRUE(desk.shows("[recieve: receive]")) << desk.screen();
  desk.keys("F9 End Up Enter");
  EXPECT_TRUE(desk.shows("\u250C About Quorvane ")) << desk.screen();
  desk.signalStandIn(SIGKILL);
  EXPECT_TRUE(eventually([&] { return desk.screen().find("\u250C") == std::string::npos; }));
  desk.keys("z");
  EXPECT_TRUE(desk.shows("[recieve: receive]z")) << "the keys are the document's again";
}

TEST(Desk, ACrashGivesTheTerminalBack) {
  Desk desk("--smart");
  for (const char* label :
       {" document", "what the input method knows", "last event", "session text, cursor 0 of 0",
        "published record, cursor 0 of 0", "key \"", "main application: runs", "window: none",
        "messages: none", "calls on the document: none",
        " F2 annotation   F3 tap of Shift   F9 menu   Ctrl-Q quit"}) {
    EXPECT_TRUE(desk.shows(label)) << label << desk.screen();
  }
  desk.keys("'i \"account\" '");
  EXPECT_TRUE(desk.line(0, "I \u201Caccount\u201D")) << desk.screen();
  desk.signal(SIGQUIT);
  EXPECT_TRUE(desk.shows("ended 131")) << desk.screen();
  EXPECT_TRUE(desk.terminalIsAsBefore());
}

TEST(Candidates, AListForEachPrefix) {
  const OwnFolder folder;
  writeWordData(folder.path() / "data");
  RunningProgram lists(folder,
                       {.arguments = {"candidates", "Acco", "zeb", "\U0001F426"},
                        .variables = {"QUORVANE_BUNDLE_DIR=" + (folder.path() / "data").string()}});
  EXPECT_EQ(lists.wait(), 0);
  EXPECT_TRUE(
      lists.output().starts_with("Acco\nAccount\nAccording\nAccommodation\nAccountant\n\n"
                                 "zeb\nzebra\n\n\U0001F426\n"))
      << lists.output();
}

}  // namespace
}  // namespace quorvane::tests
