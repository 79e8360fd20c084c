#pragma once
// Text services in memory: documents and window properties, input sources, screens, encodings.

#include <map>
#include <set>
#include <vector>

#include "hosts/icu/IcuTextEncoding.h"
#include "hosts/journal/Journal.h"
#include "platform/Screens.h"
#include "platform/TextInputSources.h"
#include "platform/TextServicesManager.h"

namespace quorvane::memory {

class MemoryTextServicesManager : public TextServicesManager {
 public:
  explicit MemoryTextServicesManager(Journal& journal) : journal_(journal) {}

  std::uint64_t TSMGetActiveDocument() override;
  OSStatus TSMGetDocumentProperty(std::uint64_t document, FourCharCode tag,
                                  std::uint32_t& value) override;
  std::uint64_t GetWindowProperty(std::uint64_t window) override;
  void SetWindowProperty(std::uint64_t window, std::uint64_t session) override;
  void SetComponentInstanceStorage(void* instance, std::uint64_t storage) override;

  std::uint64_t activeDocument = 0;
  std::map<std::uint64_t, std::map<FourCharCode, std::uint32_t>> documentProperties;
  std::map<std::uint64_t, std::uint64_t> windowProperties;

 private:
  Journal& journal_;
};

class MemoryTextInputSources : public TextInputSources {
 public:
  explicit MemoryTextInputSources(Journal& journal) : journal_(journal) {}

  OSStatus TISRegisterInputSource(const std::string& path) override;
  std::vector<TISInputSourceRef> TISCreateInputSourceList(bool includeAllInstalled) override;
  OSStatus TISEnableInputSource(TISInputSource& source) override;
  OSStatus TISDisableInputSource(TISInputSource& source) override;
  OSStatus TISSelectInputSource(TISInputSource& source) override;
  TISInputSourceRef TISCopyCurrentKeyboardInputSource() override;
  TISInputSourceRef TISCopyCurrentASCIICapableKeyboardLayoutInputSource() override;

  OSStatus registerResult = noErr;
  std::vector<TISInputSourceRef> installed;
  std::set<const TISInputSource*> enabled;
  TISInputSourceRef current;
  TISInputSourceRef layout;  ///< null: there is none

 private:
  OSStatus known(const TISInputSource& source) const;
  Journal& journal_;
};

class MemoryScreens : public Screens {
 public:
  explicit MemoryScreens(Journal& journal) : journal_(journal) {}

  std::span<const NSRect> screens() override;
  NSRect mainScreen() override;
  NSRect HIWindowGetAvailablePositioningBounds() override;
  NSPoint mouseLocation() override;
  std::int32_t CGShieldingWindowLevel() override;
  std::uint32_t CGMainDisplayID() override;
  NSRect CGDisplayBounds(std::uint32_t display) override;
  OSStatus GetThemeMenuBarHeight(std::int16_t& height) override;

  std::vector<NSRect> frames{{0, 0, 1440, 900}};
  std::size_t main = 0;  ///< the screen with the keyboard focus
  NSRect positioningBounds{0, 22, 1440, 878};
  NSPoint mouse{720, 450};
  std::int16_t menuBarHeight = 22;

 private:
  Journal& journal_;
};

class MemoryTextEncoding : public TextEncoding {
 public:
  explicit MemoryTextEncoding(Journal& journal) : journal_(journal) {}

  std::ptrdiff_t TECConvertText(std::span<const std::uint8_t> roman, std::uint8_t* out,
                                std::size_t capacity) override;
  bool CFStringGetCString(std::u16string_view text, std::span<std::uint8_t> out) override {
    return encoding_.CFStringGetCString(text, out);
  }
  std::optional<std::u16string> initWithData(std::span<const std::uint8_t> bytes,
                                             NSStringEncoding encoding) override;

  bool convertFails = false;
  bool decodeFails = false;

 private:
  Journal& journal_;
  IcuTextEncoding encoding_;
};

}  // namespace quorvane::memory
