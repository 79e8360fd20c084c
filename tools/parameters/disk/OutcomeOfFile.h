#pragma once

#include <filesystem>
#include <stdexcept>
#include <utility>

#include "hosts/resources/CheckedBytes.h"

namespace quorvane::parameters {

/// The value, or std::runtime_error with the file and the reason.
template <class Value>
Value valueOf(const std::filesystem::path& file, resources::Outcome<Value> outcome) {
  if (!outcome) throw std::runtime_error(file.string().append(": ").append(outcome.fault));
  return std::move(*outcome.value);
}

}  // namespace quorvane::parameters
