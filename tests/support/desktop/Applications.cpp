#include "tests/support/desktop/Applications.h"

#include <glib.h>

#include <fstream>
#include <sstream>

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

std::filesystem::file_time_type lastWrite(const std::filesystem::path& file) {
  std::error_code missing;
  return std::filesystem::last_write_time(file, missing);
}

Launch editorLaunch(HeadlessDesktop& desktop, const std::string& name) {
  std::filesystem::create_directories(desktop.file("XDG_CONFIG_HOME/featherpad"));
  std::ofstream(desktop.file("XDG_CONFIG_HOME/featherpad/fp.conf"))
      << "[text]\nappendEmptyLine=false\n";
  std::ofstream(desktop.file("document"), std::ios::trunc);
  return desktop.launch({name, desktop.file("document").string()});
}

Launch terminalLaunch(HeadlessDesktop& desktop) {
  return desktop.launch({"xterm", "-e", "sh", "-c", "stty -icanon; exec cat >\"$0\"",
                         desktop.file("document").string()});
}

constexpr std::string_view kPreferences = R"(
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.sessionstore.resume_from_crash", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
user_pref("termsofuse.bypassNotification", true);
user_pref("signon.rememberSignons", false);
user_pref("app.normandy.enabled", false);
user_pref("network.captive-portal-service.enabled", false);
user_pref("network.connectivity-service.enabled", false);
)";

// Blanks at the ends of a title, and several in a row, would be lost.
constexpr std::string_view kPage = R"(<!doctype html><meta charset=utf-8><title>loads</title>
<textarea rows=10 cols=80></textarea><p><input type=password>
<script>
  const fields = [...document.querySelectorAll('textarea, input')];
  const tell = () => document.title = '[' +
      fields.map(field => encodeURIComponent(field.value)).join('][') + ']' +
      (document.hasFocus() ? fields.indexOf(document.activeElement) : '-');
  for (const name of ['input', 'focus', 'blur']) addEventListener(name, tell, true);
  addEventListener('load', () => fields[0].focus());
</script>
)";

Launch browserLaunch(HeadlessDesktop& desktop) {
  std::filesystem::create_directory(desktop.file("profile"));
  std::ofstream(desktop.file("profile/user.js")) << kPreferences;
  std::ofstream(desktop.file("page.html")) << kPage;
  return desktop.launch({"firefox-esr", "--no-remote", "--profile",
                         desktop.file("profile").string(),
                         "file://" + desktop.file("page.html").string()});
}

}  // namespace

Application::Application(HeadlessDesktop& desktop, const Launch& launch)
    : desktop_((desktop.screen().forgetWindows(), desktop)),
      program_(launch),
      window_(desktop.screen().awaitWindow()) {}

testing::AssertionResult Application::shows(const std::string& expected, int field,
                                            std::chrono::seconds longest) {
  std::string last;
  const auto isThere = [&] { return (last = text(field)) == expected; };
  if (eventually(isThere, longest)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << '"' << last << "\" for \"" << expected << '"';
}

GtkClient::GtkClient(HeadlessDesktop& desktop, int version, std::vector<std::string> fields)
    : Application(desktop, gtkLaunch(desktop, version, std::move(fields))) {}

std::string GtkClient::text(int field) {
  return unescaped(program().lines().last("text " + std::to_string(field) + ' ').value_or(""));
}

Editor::Editor(HeadlessDesktop& desktop, const std::string& name)
    : Application(desktop, editorLaunch(desktop, name)) {}

std::string Editor::text(int /*field*/) {
  const auto before = lastWrite(document());
  desktop().screen().press("Control_L+s");
  eventually([&] { return lastWrite(document()) != before; }, std::chrono::milliseconds(300));
  return contentOf(document());
}

Terminal::Terminal(HeadlessDesktop& desktop) : Application(desktop, terminalLaunch(desktop)) {}

std::string Terminal::text(int /*field*/) { return contentOf(desktop().file("document")); }

Browser::Browser(HeadlessDesktop& desktop) : Application(desktop, browserLaunch(desktop)) {}

std::string Browser::text(int field) {
  std::istringstream title(desktop().screen().title(window()));
  std::string part;
  for (int i = -1; i <= field; ++i) std::getline(title, part, '[');
  gchar* const plain = g_uri_unescape_string(part.substr(0, part.find(']')).c_str(), nullptr);
  std::string result(plain == nullptr ? "" : plain);
  g_free(plain);
  return result;
}

void Browser::focus() {
  Application::focus();
  if (!isIn(0)) throw std::runtime_error("the page has no focus: " + desktop().log());
}

bool Browser::isIn(int field) {
  const std::string end = ']' + std::to_string(field);
  return eventually(
      [&] { return desktop().screen().title(window()).find(end) != std::string::npos; });
}

}  // namespace quorvane::tests
