#include "hosts/memory/MemoryTextServices.h"

#include <algorithm>

namespace quorvane::memory {
namespace {
constexpr OSStatus kPropertyNotFound = -2537;
constexpr OSStatus kParameterError = -50;
constexpr std::int32_t kShieldingWindowLevel = 2147483628;
constexpr std::uint32_t kMainDisplay = 1;
}  // namespace

std::uint64_t MemoryTextServicesManager::TSMGetActiveDocument() {
  const std::size_t line = journal_.call("TSMGetActiveDocument");
  return journal_.result(line, activeDocument);
}

OSStatus MemoryTextServicesManager::TSMGetDocumentProperty(std::uint64_t document, FourCharCode tag,
                                                           std::uint32_t& value) {
  const std::size_t line =
      journal_.call("TSMGetDocumentProperty ", document, " ", Journal::Code{tag});
  const auto properties = documentProperties.find(document);
  if (properties == documentProperties.end()) return journal_.result(line, kPropertyNotFound);
  const auto property = properties->second.find(tag);
  if (property == properties->second.end()) return journal_.result(line, kPropertyNotFound);
  value = property->second;
  return noErr;
}

std::uint64_t MemoryTextServicesManager::GetWindowProperty(std::uint64_t window) {
  journal_.call("GetWindowProperty ", window);
  const auto found = windowProperties.find(window);
  return found == windowProperties.end() ? 0 : found->second;
}

void MemoryTextServicesManager::SetWindowProperty(std::uint64_t window, std::uint64_t session) {
  journal_.call("SetWindowProperty ", window, session == 0 ? " none" : " a session");
  windowProperties[window] = session;
}

void MemoryTextServicesManager::SetComponentInstanceStorage(void* instance,
                                                            std::uint64_t /*storage*/) {
  journal_.call("SetComponentInstanceStorage ", instance ? "an instance" : "null");
}

OSStatus MemoryTextInputSources::TISRegisterInputSource(const std::string& path) {
  const std::size_t line = journal_.call("TISRegisterInputSource ", path);
  return journal_.result(line, registerResult);
}

std::vector<TISInputSourceRef> MemoryTextInputSources::TISCreateInputSourceList(
    bool includeAllInstalled) {
  journal_.call("TISCreateInputSourceList ", includeAllInstalled ? "all" : "enabled");
  if (includeAllInstalled) return installed;
  std::vector<TISInputSourceRef> list;
  std::copy_if(installed.begin(), installed.end(), std::back_inserter(list),
               [this](const TISInputSourceRef& source) { return enabled.contains(source.get()); });
  return list;
}

OSStatus MemoryTextInputSources::TISEnableInputSource(TISInputSource& source) {
  journal_.call("TISEnableInputSource ", source.kTISPropertyInputSourceID);
  const OSStatus status = known(source);
  if (status == noErr) enabled.insert(&source);
  return status;
}

OSStatus MemoryTextInputSources::TISDisableInputSource(TISInputSource& source) {
  journal_.call("TISDisableInputSource ", source.kTISPropertyInputSourceID);
  const OSStatus status = known(source);
  if (status == noErr) enabled.erase(&source);
  if (status == noErr && current.get() == &source) current.reset();
  return status;
}

OSStatus MemoryTextInputSources::TISSelectInputSource(TISInputSource& source) {
  journal_.call("TISSelectInputSource ", source.kTISPropertyInputSourceID);
  if (!source.kTISPropertyInputSourceIsSelectCapable || !enabled.contains(&source)) {
    return kParameterError;
  }
  for (const TISInputSourceRef& candidate : installed) {
    if (candidate.get() == &source) current = candidate;
  }
  return known(source);
}

TISInputSourceRef MemoryTextInputSources::TISCopyCurrentKeyboardInputSource() {
  journal_.call("TISCopyCurrentKeyboardInputSource");
  return current;
}

TISInputSourceRef MemoryTextInputSources::TISCopyCurrentASCIICapableKeyboardLayoutInputSource() {
  journal_.call("TISCopyCurrentASCIICapableKeyboardLayoutInputSource");
  return layout;
}

OSStatus MemoryTextInputSources::known(const TISInputSource& source) const {
  const bool found = std::any_of(
      installed.begin(), installed.end(),
      [&source](const TISInputSourceRef& candidate) { return candidate.get() == &source; });
  return found ? noErr : kParameterError;
}

std::span<const NSRect> MemoryScreens::screens() {
  journal_.call("screens");
  return frames;
}

NSRect MemoryScreens::mainScreen() {
  journal_.call("mainScreen");
  return main < frames.size() ? frames[main] : NSRect{};
}

NSRect MemoryScreens::HIWindowGetAvailablePositioningBounds() {
  journal_.call("HIWindowGetAvailablePositioningBounds");
  return positioningBounds;
}

NSPoint MemoryScreens::mouseLocation() {
  journal_.call("mouseLocation");
  return mouse;
}

std::int32_t MemoryScreens::CGShieldingWindowLevel() {
  journal_.count();
  return kShieldingWindowLevel;
}

std::uint32_t MemoryScreens::CGMainDisplayID() {
  journal_.count();
  return kMainDisplay;
}

NSRect MemoryScreens::CGDisplayBounds(std::uint32_t display) {
  journal_.call("CGDisplayBounds");
  return display == kMainDisplay && !frames.empty() ? frames.front() : NSRect{};
}

OSStatus MemoryScreens::GetThemeMenuBarHeight(std::int16_t& height) {
  journal_.call("GetThemeMenuBarHeight");
  height = menuBarHeight;
  return noErr;
}

std::ptrdiff_t MemoryTextEncoding::TECConvertText(std::span<const std::uint8_t> roman,
                                                  std::uint8_t* out, std::size_t capacity) {
  const std::size_t line = journal_.call("TECConvertText ", roman.size(), " bytes");
  if (convertFails) return journal_.result(line, std::ptrdiff_t{-1});
  return journal_.result(line, encoding_.TECConvertText(roman, out, capacity));
}

std::optional<std::u16string> MemoryTextEncoding::initWithData(std::span<const std::uint8_t> bytes,
                                                               NSStringEncoding encoding) {
  const std::size_t line = journal_.call("initWithData ", bytes.size(), " bytes, encoding ",
                                         Journal::Hex{static_cast<std::uint32_t>(encoding)});
  std::optional<std::u16string> text;
  if (!decodeFails) text = encoding_.initWithData(bytes, encoding);
  if (!text) journal_.result(line, std::string_view("null"));
  return text;
}

}  // namespace quorvane::memory
