#include "tools/doctor/Environments.h"

#include <string_view>

namespace quorvane::doctor {
namespace {

struct Toolkit {
  const char* variable;
  const char* wanted;
};
constexpr std::array<Toolkit, 3> kToolkits{
    {{"GTK_IM_MODULE", "ibus"}, {"QT_IM_MODULE", "ibus"}, {"XMODIFIERS", "@im=ibus"}}};

/// The desktop then leads programs to IBus without variables.
bool doesWithoutVariables(const Variables& variables) {
  return isGnome(variables) || valueOf(variables, "XDG_SESSION_TYPE") == "wayland";
}

}  // namespace

std::string valueOf(const Variables& variables, const std::string& name) {
  const auto found = variables.find(name);
  return found == variables.end() ? std::string() : found->second;
}

bool isGnome(const Variables& variables) {
  return valueOf(variables, "XDG_CURRENT_DESKTOP").find("GNOME") != std::string::npos;
}

std::string toolkitFault(const Variables& variables) {
  std::string fault;
  for (const auto& [variable, wanted] : kToolkits) {
    const std::string value = valueOf(variables, variable);
    if (value == wanted || (value.empty() && doesWithoutVariables(variables))) continue;
    fault += fault.empty() ? "" : ", ";
    fault += variable + (value.empty() ? std::string(" isn't set") : " is " + value);
  }
  return fault;
}

}  // namespace quorvane::doctor
