#include "hosts/desktop/TextInputSources.h"

#include <algorithm>

namespace quorvane::desktop {
namespace {

constexpr OSStatus kParamErr = -50;
constexpr OSStatus kFileNotFound = -43;
constexpr OSStatus kIoErr = -36;

// One group for each source, and one that says which of them is selected.
const std::string kState = "Input Sources";
const std::string kSelected = "Selected";
const std::string kName = "LocalizedName";
const std::string kPath = "Path";
const std::string kEnabled = "Enabled";

/// The path that a file URL names; any other text is taken as a path as it stands.
std::string pathOf(const std::string& text) {
  const std::unique_ptr<char, decltype(&g_free)> path(
      g_filename_from_uri(text.c_str(), nullptr, nullptr), g_free);
  return path == nullptr ? text : std::string(path.get());
}

}  // namespace

TextInputSources::TextInputSources(const std::filesystem::path& folder, std::string identifier,
                                   std::string localizedName, quorvane::LogSink& log)
    : identifier_(std::move(identifier)),
      localizedName_(std::move(localizedName)),
      file_(folder / "input-sources.ini", log),
      layouts_(log) {}

OSStatus TextInputSources::TISRegisterInputSource(const std::string& path) {
  const std::string program = pathOf(path);
  std::error_code error;
  if (!std::filesystem::exists(program, error)) return kFileNotFound;
  file_.setText(identifier_, kName, localizedName_);
  file_.setText(identifier_, kPath, program);
  return saved();
}

std::vector<TISInputSourceRef> TextInputSources::TISCreateInputSourceList(
    bool includeAllInstalled) {
  std::vector<TISInputSourceRef> sources;
  for (const std::string& group : file_.groups()) {
    if (!isRegistered(group)) continue;
    if (includeAllInstalled || file_.boolean(group, kEnabled)) sources.push_back(sourceOf(group));
  }
  return sources;
}

OSStatus TextInputSources::TISEnableInputSource(TISInputSource& source) {
  return setEnabled(source, true);
}

OSStatus TextInputSources::TISDisableInputSource(TISInputSource& source) {
  const std::string& identifier = source.kTISPropertyInputSourceID;
  if (file_.text(kState, kSelected) == identifier) file_.remove(kState, kSelected);
  return setEnabled(source, false);
}

OSStatus TextInputSources::TISSelectInputSource(TISInputSource& source) {
  const std::string& identifier = source.kTISPropertyInputSourceID;
  if (!isRegistered(identifier) || !file_.boolean(identifier, kEnabled)) return kParamErr;
  file_.setText(kState, kSelected, identifier);
  return saved();
}

TISInputSourceRef TextInputSources::TISCopyCurrentKeyboardInputSource() {
  const std::string selected = file_.text(kState, kSelected);
  return isRegistered(selected) ? sourceOf(selected) : layouts_.current();
}

TISInputSourceRef TextInputSources::TISCopyCurrentASCIICapableKeyboardLayoutInputSource() {
  return layouts_.asciiCapable();
}

keyboard::LayoutData TextInputSources::keyboardLayout() {
  return layouts_.current()->kTISPropertyUnicodeKeyLayoutData;
}

bool TextInputSources::isRegistered(const std::string& identifier) const {
  return !identifier.empty() && file_.has(identifier, kPath);
}

TISInputSourceRef TextInputSources::sourceOf(const std::string& identifier) const {
  return std::make_shared<TISInputSource>(
      TISInputSource{identifier, file_.text(identifier, kName), true, nullptr});
}

OSStatus TextInputSources::setEnabled(const TISInputSource& source, bool enabled) {
  const std::string& identifier = source.kTISPropertyInputSourceID;
  if (!isRegistered(identifier)) return kParamErr;
  file_.setBoolean(identifier, kEnabled, enabled);
  return saved();
}

OSStatus TextInputSources::saved() { return file_.save() ? noErr : kIoErr; }

}  // namespace quorvane::desktop
