#pragma once
// Messages to the main application's server port and to the Pencil Menu's port. A message only
// prompts: what it is about stands in shared memory. Without a receiver the caller goes on as if it
// had been sent; nothing is tried twice.

#include <memory>
#include <string_view>

#include "src/base/Instance.h"

namespace quorvane {

inline constexpr std::string_view kBasicAppPortName = "Q7T2M4K9W1.com.tallowmere.Quorvane.server";
inline constexpr std::string_view kBasicMenuletPortName =
    "Q7T2M4K9W1.com.tallowmere.QorvMenuletPortServer";

inline constexpr std::int32_t kNoPort = -1;
inline constexpr std::int32_t kSendFailed = -2;
inline constexpr std::int32_t kNoPortWithReply = -44;

struct MessageSendState {
  std::shared_ptr<CFMessagePort> gm_serverPortRef;  ///< of the waiting send
  std::uint8_t TOOLCALLBUSY = 0;                    ///< 1 for the time of a command's sending
  std::uint8_t AEITEM_Process_active = 0;
};

/// Sends and doesn't wait. 0, kNoPort or kSendFailed.
std::int32_t BIM_SendMessageToUIServer(Instance& instance, std::uint32_t cmd,
                                       FourCharCode signature);
/// Sends and waits for the reply, up to 1600 seconds, with the run loop running. 0,
/// kNoPortWithReply or the result of the sending. `replyOut` may be null.
std::int32_t BIM_SendMessageToUIServerWithReply(Instance& instance, std::uint32_t cmd,
                                                FourCharCode signature, CFData* replyOut);
/// Sends and waits up to 10 seconds; the reply isn't looked at. 0, kNoPort or kSendFailed.
std::int32_t BIMSendMessageToAppServerWithReply(Instance& instance, std::uint32_t id,
                                                std::uint32_t ignored);
/// Message 100 to the server port. The value isn't sent.
std::int32_t BIMSendAppMessage(Instance& instance, std::uint32_t value);
std::int32_t CallDirectQorvBIMSendAppMessage(Instance& instance, std::uint32_t value);

/// 0, kNoPort, kSendFailed or the error of GetCurrentProcess.
std::int32_t BIMSendMessageToMenuletServer(Instance& instance, std::uint32_t id);
/// Asks the Pencil Menu to quit.
std::int32_t BIMQuitMenulet(Instance& instance);

std::uint8_t is_AEITEM_Process_active(Instance& instance);

}  // namespace quorvane
