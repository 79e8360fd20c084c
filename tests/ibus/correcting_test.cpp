// The input method itself, under the text fields of real programs: what a machine that is held up
// has left out is typed again. $QUORVANE_RUNS has each field opened and typed into so often.

#include <memory>

#include "tests/ibus/ServedDesktop.h"

namespace quorvane::tests {
namespace {

struct Kind {
  const char* name;
  const char* program;  ///< as its switches have it
  std::unique_ptr<Application> (*open)(HeadlessDesktop& desktop);

  friend void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }
};

template <int version>
std::unique_ptr<Application> openEntry(HeadlessDesktop& desktop) {
  return std::make_unique<GtkClient>(desktop, version, std::vector<std::string>{"entry"});
}
template <int version>
std::unique_ptr<Application> openView(HeadlessDesktop& desktop) {
  return std::make_unique<GtkClient>(desktop, version, std::vector<std::string>{"view"});
}

const Kind kKinds[] = {
    {"Gtk3Entry", "desktop_gtk3", openEntry<3>},
    {"Gtk3View", "desktop_gtk3", openView<3>},
    {"Gtk4Entry", "desktop_gtk4", openEntry<4>},
    {"Gtk4View", "desktop_gtk4", openView<4>},
    {"Mousepad", "mousepad", [](HeadlessDesktop& desktop) -> std::unique_ptr<Application> {
       return std::make_unique<Editor>(desktop, "mousepad");
     }}};

class Correcting : public ServedDesktop, public testing::WithParamInterface<Kind> {
 protected:
  void expect(const char* typed, const std::string& right) {
    const bool isMeasured = std::getenv("QUORVANE_RUNS") != nullptr;
    const int runs = numberOr("QUORVANE_RUNS", 5);
    int good = 0;
    for (int i = 0; i < runs && (isMeasured || good == 0); ++i) {
      const auto field = GetParam().open(desktop());
      field->focus();
      screen().type(typed, Screen::Pause(20));
      good += field->shows(right, 0, std::chrono::seconds(isMeasured ? 3 : 10)) ? 1 : 0;
    }
    EXPECT_GE(good, isMeasured ? runs : 1);
    std::cout << GetParam().name << ": " << good << " of " << runs << '\n';
  }
};

TEST_P(Correcting, WordsBecomeRight) {
  start();
  expect(kTyped, kCorrected);
}

TEST_P(Correcting, CapitalsQuotesAndDashesAreMade) {
  const std::string quorvane = QUORVANE_PROGRAM;
  start(true, "/bin/sh -c 'for kind in quotes dashes capitals; do " + quorvane +
                  " corrections on $kind; done; exec " + quorvane + " server --ibus'");
  ASSERT_EQ(run({"settings", "switches", GetParam().program, "+checking", "+corrections"}), 0);
  expect("it was \"fine\" -- he said. then left. ", "It was “fine” — he said. Then left. ");
}

INSTANTIATE_TEST_SUITE_P(In, Correcting, testing::ValuesIn(kKinds),
                         [](const auto& kind) { return kind.param.name; });

}  // namespace
}  // namespace quorvane::tests
