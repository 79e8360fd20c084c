#pragma once
// The input sources of this user: which are registered, enabled and selected, in a file beside the
// user defaults. The keyboard layout is the session's and stands in no file of ours.

#include "hosts/desktop/KeyFile.h"
#include "hosts/desktop/KeyboardLayouts.h"
#include "platform/TextInputSources.h"

namespace quorvane::desktop {

class TextInputSources final : public quorvane::TextInputSources {
 public:
  /// What a registration brings in is one source: `identifier`, called `localizedName`.
  TextInputSources(const std::filesystem::path& folder, std::string identifier,
                   std::string localizedName, quorvane::LogSink& log);

  /// A file URL is taken for the path that it names. fnfErr where nothing lies there.
  OSStatus TISRegisterInputSource(const std::string& path) override;
  std::vector<TISInputSourceRef> TISCreateInputSourceList(bool includeAllInstalled) override;
  /// These three give paramErr for a source that isn't registered; so does selecting one that isn't
  /// enabled. Disabling the selected source leaves none selected.
  OSStatus TISEnableInputSource(TISInputSource& source) override;
  OSStatus TISDisableInputSource(TISInputSource& source) override;
  OSStatus TISSelectInputSource(TISInputSource& source) override;
  /// The selected input method, or the keyboard layout where none is selected.
  TISInputSourceRef TISCopyCurrentKeyboardInputSource() override;
  TISInputSourceRef TISCopyCurrentASCIICapableKeyboardLayoutInputSource() override;

  /// The layout that the keys are typed on.
  [[nodiscard]] keyboard::LayoutData keyboardLayout();

 private:
  [[nodiscard]] bool isRegistered(const std::string& identifier) const;
  [[nodiscard]] TISInputSourceRef sourceOf(const std::string& identifier) const;
  OSStatus setEnabled(const TISInputSource& source, bool enabled);
  OSStatus saved();

  std::string identifier_;
  std::string localizedName_;
  KeyFile file_;
  KeyboardLayouts layouts_;
};

}  // namespace quorvane::desktop
