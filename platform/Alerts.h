#pragma once
// NSAlert: a question that waits for its answer.

#include <string>
#include <vector>

namespace quorvane {

inline constexpr int NSAlertStyleWarning = 0;
inline constexpr int NSAlertFirstButtonReturn = 1000;

struct NSAlert {
  int alertStyle = NSAlertStyleWarning;
  std::string messageText;
  std::string informativeText;
  std::vector<std::string> buttons;  ///< titles, the first one is what Return presses
};

class Alerts {
 public:
  virtual ~Alerts() = default;

  /// -[NSAlert runModal]: NSAlertFirstButtonReturn for the first button, one more for each behind
  /// it. Keys go on meanwhile. Where nobody can be asked, or nobody answers, the last button.
  virtual int runModal(const NSAlert& alert) = 0;
};

}  // namespace quorvane
