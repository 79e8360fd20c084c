#include "hosts/desktop/Application.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>

#include "hosts/menu/MainMenu.h"

namespace quorvane::desktop {
namespace {

constexpr double kAppKitVersionOf1015 = 1894;
constexpr std::array<std::string_view, 2> kNibs{"AnnotationWindow", "MainMenu"};

}  // namespace

Application::Application(RunLoop& runLoop, const NibOutlets& annotationWindow,
                         std::function<void()> cleanUp)
    : runLoop_(runLoop), annotationWindow_(annotationWindow), cleanUp_(std::move(cleanUp)) {}

void Application::beginActivityWithOptions(std::uint64_t /*options*/, std::string_view /*reason*/) {
}

std::string Application::bundleIdentifier() { return "com.tallowmere.inputmethod.Quorvane"; }

std::string Application::bundleURL() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return {};
  const std::unique_ptr<char, decltype(&g_free)> url(
      g_filename_to_uri(program.c_str(), nullptr, nullptr), g_free);
  return url == nullptr ? std::string() : std::string(url.get());
}

bool Application::loadNibNamed(std::string_view name,
                               std::function<void(const NibOutlets&)> awakeFromNib) {
  if (std::ranges::find(kNibs, name) == kNibs.end()) return false;
  if (awakeFromNib) awakeFromNib(outletsOf(name));
  return true;
}

NibOutlets Application::outletsOf(std::string_view nib) {
  if (nib == kNibs.front()) return annotationWindow_;
  menu_ = loadMainMenu();
  return {.menu = menu_.get()};
}

std::unique_ptr<Registration> Application::addObserver(NSApplicationNotification /*name*/,
                                                       std::function<void()> /*observer*/) {
  return std::make_unique<Registration>();
}

void Application::run() { runLoop_.run(); }

void Application::exit(int status) {
  cleanUp_();
  std::exit(status);
}

double Application::NSAppKitVersionNumber() { return kAppKitVersionOf1015; }

NSOperatingSystemVersion Application::operatingSystemVersion() { return {10, 15}; }

}  // namespace quorvane::desktop
