#include "tests/support/desktop/Applications.h"

#include <glib.h>

namespace quorvane::tests {
namespace {

std::string unescaped(const std::string& text) {
  gchar* const plain = g_strcompress(text.c_str());
  std::string result(plain);
  g_free(plain);
  return result;
}

Launch gtkLaunch(HeadlessDesktop& desktop, int version, std::vector<std::string> fields) {
  fields.insert(fields.begin(), QUORVANE_DESKTOP_PROGRAMS "/desktop_gtk" + std::to_string(version));
  return desktop.launch(std::move(fields), true);
}

}  // namespace

Application::Application(HeadlessDesktop& desktop, const Launch& launch)
    : desktop_((desktop.screen().forgetWindows(), desktop)),
      program_(launch),
      window_(desktop.screen().awaitWindow()) {}

testing::AssertionResult Application::shows(const std::string& expected, int field) {
  using namespace std::chrono_literals;
  std::string last;
  const auto limit = std::chrono::steady_clock::now() + 10s;
  while ((last = text(field)) != expected) {
    if (std::chrono::steady_clock::now() > limit) {
      return testing::AssertionFailure() << '"' << last << "\" for \"" << expected << '"';
    }
    pauseShortly();
  }
  return testing::AssertionSuccess();
}

GtkClient::GtkClient(HeadlessDesktop& desktop, int version, std::vector<std::string> fields)
    : Application(desktop, gtkLaunch(desktop, version, std::move(fields))) {}

std::string GtkClient::text(int field) {
  return unescaped(program().lines().last("text " + std::to_string(field) + ' ').value_or(""));
}

}  // namespace quorvane::tests
