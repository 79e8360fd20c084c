#pragma once
// A document of simdjson's on-demand reader, from its beginning to its end.

#include <simdjson.h>

#include <string>

#include "platform/JSONSerialization.h"

namespace quorvane {

/// Values of the library are passed by reference: their copies cost as much again as the walk.
class JSONWalk {
 public:
  static constexpr int kDepthLimit = 1024;

  /// `at` points into the text; null where the place isn't known.
  struct Failure {
    std::string message;
    const char* at = nullptr;
  };

  explicit JSONWalk(JSONHandler& handler) : handler_(handler) {}

  /// Tells the handler of everything. False with a `failure`.
  bool document(simdjson::ondemand::document& document);
  [[nodiscard]] const Failure& failure() const { return failure_; }

 private:
  bool object(simdjson::ondemand::object& object);
  bool array(simdjson::ondemand::array& array);
  bool value(simdjson::ondemand::value& value);
  simdjson::error_code scalar(simdjson::ondemand::value& value, simdjson::ondemand::json_type type);
  simdjson::error_code number(simdjson::ondemand::value& value);
  // At the reader's place, or at the beginning of what has been read last.
  bool fail(const char* message);
  bool fail(simdjson::error_code error);
  bool fail(simdjson::error_code error, const char* at);

  JSONHandler& handler_;
  simdjson::ondemand::document* document_ = nullptr;
  int depth_ = 0;
  Failure failure_;
};

}  // namespace quorvane
