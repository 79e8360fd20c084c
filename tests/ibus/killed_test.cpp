// Whoever of us dies while somebody types: no character is lost, and corrections are soon back.

#include <csignal>
#include <thread>

#include "tests/ibus/ServedDesktop.h"

namespace quorvane::tests {
namespace {

using namespace std::chrono_literals;

class Killed : public ServedDesktop {
 protected:
  /// Kills in the midst of a word.
  void typeAcross(GtkClient& client, pid_t killed) {
    screen().type("and whi", Screen::Pause(4));
    ::kill(killed, SIGKILL);
    screen().type("ch goes on ", Screen::Pause(4));
    typed_ += "and which goes on ";
    EXPECT_TRUE(client.shows(typed_));
  }
  /// How long until a word is corrected.
  std::chrono::milliseconds untilCorrected(GtkClient& client) {
    const auto start = std::chrono::steady_clock::now();
    std::size_t length = typed_.size();
    EXPECT_TRUE(eventually([&] {
      screen().type("teh ");
      length += 4;
      EXPECT_TRUE(eventually([&] { return client.text().size() == length; })) << client.text();
      return client.text().ends_with("the ");
    })) << desktop().log();
    typed_ = client.text();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 start);
  }
  std::string typed_;
};

TEST_F(Killed, NoCharacterIsLostAndCorrectionsComeBack) {
  start();
  GtkClient client(desktop(), 3, {"entry"});
  client.focus();
  for (const std::string_view each : {kInputMethod, kMainApplication, kServer}) {
    typeAcross(client, member(each));
    std::cout << each << " is back after " << untilCorrected(client).count() << " ms\n";
  }
}

}  // namespace
}  // namespace quorvane::tests
