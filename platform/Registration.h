#pragma once

namespace quorvane {

/// Whatever was registered lasts as long as this: destroying it takes it back.
class Registration {
 public:
  virtual ~Registration() = default;
};

}  // namespace quorvane
