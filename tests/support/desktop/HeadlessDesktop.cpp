#include "tests/support/desktop/HeadlessDesktop.h"

#include <glib.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace quorvane::tests {
namespace {

bool onPath(const std::string& program) {
  return ::access(("/usr/bin/" + program).c_str(), X_OK) == 0;
}

/// A socket at which one program calls, as a connection.
class Doorbell {
 public:
  explicit Doorbell(const std::filesystem::path& path) {
    sockaddr_un address{AF_UNIX, {}};
    path.native().copy(address.sun_path, sizeof address.sun_path - 1);
    ::unlink(path.c_str());
    if (::bind(socket_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(socket_.get(), 1) != 0) {
      throw std::runtime_error("no socket for the panel");
    }
  }

  [[nodiscard]] std::unique_ptr<Lines> answer() const {
    pollfd waiting{socket_.get(), POLLIN, 0};
    if (::poll(&waiting, 1, 20'000) <= 0) throw std::runtime_error("the panel hasn't started");
    return std::make_unique<Lines>(::accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC));
  }

 private:
  desktop::Descriptor socket_{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
};

/// The framework's own input context, which has the focus while no client has.
constexpr const char* kNobody = "/org/freedesktop/IBus/InputContext_1";

constexpr std::string_view kComponent = R"(<?xml version="1.0" encoding="utf-8"?>
<component><name>org.freedesktop.IBus.Quorvane</name><description>-</description>
<exec>@</exec><version>1</version><author>-</author><license>-</license><homepage>-</homepage>
<textdomain>-</textdomain><engines><engine><name>quorvane</name><language>en</language>
<license>-</license><author>-</author><icon></icon><layout>default</layout>
<longname>Quorvane</longname><description>-</description><rank>1</rank></engine></engines>
</component>
)";

}  // namespace

std::string HeadlessDesktop::missing() {
  for (const std::string program : {"Xvfb", "dbus-daemon", "ibus-daemon"}) {
    if (!onPath(program)) return program + " isn't installed";
  }
  return {};
}

HeadlessDesktop::HeadlessDesktop(DesktopOptions options) : options_(std::move(options)) {
  variables_ = options_.variables;
  for (const char* const name : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME",
                                 "XDG_RUNTIME_DIR", "IBUS_COMPONENT_PATH"}) {
    std::filesystem::create_directory(file(name));
    variables_.push_back(std::string(name) + '=' + file(name).string());
  }
  std::filesystem::permissions(file("XDG_RUNTIME_DIR"), std::filesystem::perms::owner_all);
  for (const char* const variable :
       {"PATH=/usr/bin:/bin", "LANG=C.UTF-8", "NO_AT_BRIDGE=1", "GTK_A11Y=none",
        "GTK_IM_MODULE=ibus", "QT_IM_MODULE=ibus", "XMODIFIERS=@im=ibus", "GDK_BACKEND=x11",
        "GSK_RENDERER=cairo", "GSETTINGS_BACKEND=memory"}) {
    variables_.emplace_back(variable);
  }
  variables_.emplace_back(options_.sync ? "IBUS_ENABLE_SYNC_MODE=true" : "IBUS_ENABLE_SYNC_MODE=0");
  writeComponent();
  startDisplay();
  startBus();
  startDaemon();
}

void HeadlessDesktop::writeComponent() const {
  const std::size_t place = kComponent.find('@');
  gchar* const engine = g_markup_escape_text(options_.engine.c_str(), -1);
  std::ofstream(file("IBUS_COMPONENT_PATH") / "quorvane.xml")
      << kComponent.substr(0, place) << engine << kComponent.substr(place + 1);
  g_free(engine);
}

Launch HeadlessDesktop::launch(std::vector<std::string> command, bool speaks) const {
  return {std::move(command), variables_, file("log"), speaks};
}

void HeadlessDesktop::startDisplay() {
  display_ = std::make_unique<Program>(launch(
      {"Xvfb", "-displayfd", "1", "-screen", "0", "1024x768x24", "-nolisten", "tcp", "-noreset"},
      true));
  const std::string name = ":" + display_->lines().await("");
  variables_.push_back("DISPLAY=" + name);
  screen_ = std::make_unique<Screen>(name);
}

void HeadlessDesktop::startBus() {
  bus_ = std::make_unique<Program>(
      launch({"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1",
              "--address=unix:path=" + file("bus").string()},
             true));
  variables_.push_back("DBUS_SESSION_BUS_ADDRESS=" + bus_->lines().await(""));
}

void HeadlessDesktop::startDaemon() {
  const Doorbell door(file("panel"));
  std::filesystem::remove(file("ibus"));
  std::vector<std::string> command{
      "ibus-daemon",
      "--verbose",  // keeps what the engine says on standard error
      "--replace",
      "--cache=none",
      "--config=disable",
      "--emoji-extension=disable",
      "--address=unix:path=" + file("ibus").string(),
      "--panel=" QUORVANE_DESKTOP_PROGRAMS "/desktop_panel " + file("panel").string()};
  if (options_.xim) command.emplace_back("--xim");
  daemon_ = std::make_unique<Program>(launch(std::move(command)));
  panel_ = door.answer();
  selectEngine();
  if (options_.xim && !eventually([&] { return screen_->isOwned("@server=ibus"); })) {
    throw std::runtime_error("no X input method: " + log());
  }
}

void HeadlessDesktop::selectEngine() {
  panel_->send("engine quorvane");
  if (panel_->await("engine ") != "quorvane") throw std::runtime_error("no engine: " + log());
}

pid_t HeadlessDesktop::engine() const {
  const std::string process = "/proc/" + std::to_string(daemon_->pid());
  std::istringstream children(
      contentOf(process + "/task/" + std::to_string(daemon_->pid()) + "/children"));
  const std::string program = options_.engine.substr(0, options_.engine.find(' '));
  for (pid_t child = 0; children >> child;) {
    const std::string line = contentOf("/proc/" + std::to_string(child) + "/cmdline");
    if (line.substr(0, line.find('\0')) == program) return child;
  }
  return 0;
}

void HeadlessDesktop::focus(Screen::Window window) {
  if (screen_->hasFocus(window)) return;
  focusBy([&] { screen_->focus(window); });
}

void HeadlessDesktop::awaitFocus() {
  while (panel_->await("focus ") == kNobody) continue;
}

void HeadlessDesktop::screenshot(const std::filesystem::path& picture) const {
  if (Program(launch({"import", "-window", "root", picture.string()})).wait() != 0) {
    throw std::runtime_error("no picture: " + log());
  }
}

}  // namespace quorvane::tests
