#pragma once
// The input method's own port: fixes to commit, and orders of the main application.

#include <memory>
#include <optional>
#include <string>

#include "src/base/Instance.h"

namespace quorvane {

inline constexpr std::int32_t kBasicMessageInput = 202;
inline constexpr std::int32_t kBasicMessage_DockCommand = 230;
inline constexpr std::int32_t kBasicMessagePaste = 250;
inline constexpr std::int32_t kBasicMessage_DoSpecialPasteCommand = 251;

struct MessageReceiveState {
  /// The run loop may hold the port longer than the process lives: the port then finds this gone.
  std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
};

/// Opens the own port, for as long as the run loop lives. 0; the error of GetCurrentProcess; -1: no
/// port; -2: no run loop; -3: no source.
std::int32_t BIMInitializeMessageReceiving(Instance& instance);
std::string BIMCreatePortName(Instance& instance, const ProcessSerialNumber& serial);
/// One message. Nothing beyond the data is read, whatever it claims. There is never a reply.
std::optional<CFData> BIMMessagePortCallBack(Instance& instance, std::int32_t id,
                                             const CFData* data);

}  // namespace quorvane
