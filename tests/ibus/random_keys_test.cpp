// Random keys, clicks, pastes and changes of the focus between two clients, whose texts others
// change, too. The main application makes capitals of words and nothing else, so that the law is
// simple: but for capitals each text is what the keys make of it where nobody corrects anything.
// $QUORVANE_KEYS says how many keys.

#include <algorithm>
#include <array>
#include <random>
#include <thread>

#include "tests/ibus/ServedDesktop.h"

namespace quorvane::tests {
namespace {

constexpr std::size_t kLongest = 60;  ///< longer ones would scroll

std::string lower(std::string text) {
  std::ranges::transform(text, text.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
  return text;
}

struct Model {
  std::string text;
  std::size_t caret = 0;

  void insert(const std::string& typed) {
    text.insert(caret, typed);
    caret += typed.size();
  }
  void press(const std::string& key) {
    if (key == "BackSpace" && caret > 0) text.erase(--caret, 1);
    if (key == "Delete" && caret < text.size()) text.erase(caret, 1);
    if (key == "Left" && caret > 0) --caret;
    if (key == "Right" && caret < text.size()) ++caret;
    if (key == "Home") caret = 0;
    if (key == "End") caret = text.size();
  }
};

class RandomKeys : public ServedDesktop {
 protected:
  struct Client {
    GtkClient program;
    std::array<Model, 2> fields{};
    std::size_t field = 0;
  };

  void open() {
    for (const int version : {3, 4}) {
      clients_.emplace_back(
          new Client{{desktop(), version, std::vector<std::string>{"entry", "view"}}});
    }
    // One that has just appeared takes the focus by itself.
    for (const int which : {1, 0}) clients_[static_cast<std::size_t>(which)]->program.focus();
    client_ = clients_.front().get();
  }

  void type() {
    constexpr std::string_view kKeys = "aehtaehtrs   ,";
    const char key = kKeys[below(kKeys.size())];
    screen().type(std::string(1, key), Screen::Pause(below(4) == 0 ? below(12) : 0));
    model().insert(std::string(1, key));
  }
  void press() {
    constexpr std::array kKeys{"BackSpace", "BackSpace", "Left", "Right", "Delete", "Home", "End"};
    const char* const key = kKeys[below(kKeys.size())];
    screen().press(key);
    model().press(key);
  }
  /// Behind the text; never twice at one place, which would select.
  void click() {
    settle();
    client_->field = below(2);
    const int place = 460 + static_cast<int>(clicks_++ % 10) * 12;
    screen().click(client_->program.window(), place, client_->field == 0 ? 15 : 60);
    model().press("End");
  }
  void changeClient() {
    settle();
    client_ = clients_[below(clients_.size())].get();
    screen().focus(client_->program.window());
  }
  void changeText() {
    type();  // the field has been clicked into before
    settle();
    const std::string text = below(2) == 0 ? "others wrote that " : "";
    client_->program.send("set " + text);
    model() = {text, text.size()};
    settle();
  }
  void paste() {
    settle();
    client_->program.send("copy tarts, ");
    client_->program.program().lines().await("copied");
    screen().press("Control_L+v");
    model().insert("tarts, ");
    settle();
  }

  void step() {
    if (model().text.size() > kLongest) return changeText();
    switch (below(60)) {
      case 0:
        return click();
      case 1:
        return below(4) == 0 ? changeClient() : type();
      case 2:
        return below(8) == 0 ? changeText() : type();
      case 3:
        return below(8) == 0 ? paste() : type();
      case 4:
      case 5:
      case 6:
      case 7:
      case 8:
      case 9:
        return press();
      default:
        type();
    }
  }

  /// Each text, once the clients have done all.
  void settle() {
    for (const auto& client : clients_) {
      for (int i = 0; i < 2; ++i) {
        const std::string& right = client->fields[static_cast<std::size_t>(i)].text;
        std::string text;
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (lower(text = client->program.text(i)) != right) {
          if (std::chrono::steady_clock::now() >= limit) failed_ = true;
          ASSERT_LT(std::chrono::steady_clock::now(), limit)
              << '"' << text << "\" for \"" << right << "\", field " << i << " of "
              << (client == clients_.front() ? "GTK 3" : "GTK 4");
          pauseShortly();
        }
        capitals_ += std::ranges::count_if(text, [](char c) { return c >= 'A' && c <= 'Z'; });
      }
    }
  }

  Model& model() { return client_->fields[client_->field]; }
  std::size_t below(std::size_t limit) { return random_() % limit; }

  std::mt19937 random_;
  std::vector<std::unique_ptr<Client>> clients_;
  Client* client_ = nullptr;
  unsigned clicks_ = 0;
  bool failed_ = false;
  std::int64_t capitals_ = 0;
};

TEST_F(RandomKeys, MakeTheTextsThatTheyMakeWithoutUs) {
  const int seed = numberOr("QUORVANE_SEED", static_cast<int>(std::random_device{}() % 10'000));
  std::cout << "QUORVANE_SEED=" << seed << '\n';
  random_.seed(static_cast<unsigned>(seed));
  start(true,
        "/bin/sh -c 'export QUORVANE_RUNTIME_DIR=$XDG_RUNTIME_DIR/quorvane; "
        "mkdir -m 700 $QUORVANE_RUNTIME_DIR; "
        "python3 " QUORVANE_SOURCE_DIR
        "/tests/ibus/capitals.py & "
        "until ls $QUORVANE_RUNTIME_DIR/*.process; do sleep 0.02; done; "
        "exec " QUORVANE_PROGRAM " server --ibus'");
  open();
  const int keys = numberOr("QUORVANE_KEYS", 600);
  for (int i = 0; i < keys && !failed_; ++i) step();
  if (!failed_) settle();
  std::cout << keys << " keys, " << capitals_ << " capitals seen\n";
  EXPECT_GT(capitals_, 0);
}

}  // namespace
}  // namespace quorvane::tests
