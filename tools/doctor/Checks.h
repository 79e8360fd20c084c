#pragma once
// What the facts mean, and what is to be done.

#include <string>
#include <vector>

#include "tools/doctor/Facts.h"

namespace quorvane::doctor {

/// Open: it shows only when something else has been mended.
enum class State { Good, Bad, Open };

struct Finding {
  std::string check;
  State state = State::Good;
  std::string found;
  std::string remedy;  ///< of a bad one
};

/// One for each link of the chain, in its order.
std::vector<Finding> examine(const Facts& facts);
bool isAllWell(const std::vector<Finding>& findings);

std::string asText(const std::vector<Finding>& findings);
std::string asJSON(const std::vector<Finding>& findings);

}  // namespace quorvane::doctor
