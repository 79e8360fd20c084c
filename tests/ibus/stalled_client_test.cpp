// A client that stands still for a while somewhere in a sentence, while somebody types on.
// $QUORVANE_STALLS says how often.

#include <map>
#include <random>
#include <thread>

#include "tests/ibus/ServedDesktop.h"

namespace quorvane::tests {
namespace {

using namespace std::chrono_literals;

bool isUndamaged(const std::string& text) { return isPartlyRight(text, kTyped, kCorrected); }

class StalledClient : public ServedDesktop, public testing::WithParamInterface<bool> {
 protected:
  /// What stands there in the end, by how often.
  std::map<std::string, int> typeInto(int version) {
    const int seed = numberOr("QUORVANE_SEED", static_cast<int>(std::random_device{}() % 10'000));
    std::cout << "QUORVANE_SEED=" << seed << '\n';
    std::mt19937 random(static_cast<unsigned>(seed));
    std::map<std::string, int> texts;
    for (int i = numberOr("QUORVANE_STALLS", 3); i > 0; --i) {
      GtkClient client(desktop(), version, {"entry"});
      client.focus();
      std::thread stall([&, start = std::chrono::milliseconds(random() % 800)] {
        std::this_thread::sleep_for(start);
        client.stop();
        std::this_thread::sleep_for(400ms);
        client.goOn();
      });
      screen().type(kTyped, Screen::Pause(20));
      stall.join();
      for (int left = 20; left > 0 && !client.shows(kCorrected, 0, 1s); --left)
        if (isUndamaged(client.text())) break;
      ++texts[client.text()];
    }
    for (const auto& [text, count] : texts)
      std::cout << count << " of GTK " << version << ": " << text << '\n';
    return texts;
  }
};

TEST_P(StalledClient, OfGtk3IsNeverDamaged) {
  start(GetParam());
  for (const auto& [text, count] : typeInto(3)) EXPECT_TRUE(isUndamaged(text)) << text;
}

/// That one damages its text by itself where it doesn't wait.
TEST_P(StalledClient, OfGtk4IsNoWorseThanWithoutUs) {
  start(GetParam());
  int damaged = 0;
  for (const auto& [text, count] : typeInto(4)) damaged += isUndamaged(text) ? 0 : count;
  int damagedAnyway = 0;
  if (damaged > 0) {
    start(GetParam(), QUORVANE_DESKTOP_PROGRAMS "/desktop_trivial_engine");
    for (const auto& [text, count] : typeInto(4)) damagedAnyway += text == kTyped ? 0 : count;
  }
  EXPECT_LE(damaged, damagedAnyway);
}

INSTANTIATE_TEST_SUITE_P(And, StalledClient, testing::Bool(),
                         [](const auto& sync) { return sync.param ? "Sync" : "Async"; });

}  // namespace
}  // namespace quorvane::tests
