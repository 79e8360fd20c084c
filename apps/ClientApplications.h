#pragma once
// The programs whose text fields get keys, as applications of the family's list: the one in front,
// and its switches. Who types into one for the first time has checking switched on there, but not
// in a terminal.

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "apps/FrontApplication.h"
#include "hosts/desktop/ProcessRegistry.h"

namespace quorvane {

class ClientApplications {
 public:
  /// Both references outlive this. `support`: where the parameter file is.
  ClientApplications(desktop::ProcessRegistry& registry, FrontApplication& front,
                     std::filesystem::path support);

  /// `client` as it calls itself.
  void toFront(std::string_view client);

 private:
  std::int32_t processOf(std::string_view client);
  void setUsualSwitches(const std::string& program);

  desktop::ProcessRegistry& registry_;
  FrontApplication& front_;
  std::filesystem::path support_;
  std::map<std::string, std::int32_t, std::less<>> known_;  ///< processes, by clients
};

}  // namespace quorvane
