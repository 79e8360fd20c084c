#include "hosts/json/JSONWalk.h"

namespace quorvane {
namespace {

using simdjson::error_code;
using simdjson::ondemand::json_type;
using simdjson::ondemand::number_type;

}  // namespace

bool JSONWalk::document(simdjson::ondemand::document& document) {
  document_ = &document;
  simdjson::ondemand::object topObject;
  simdjson::ondemand::array topArray;
  json_type type{};
  if (const auto error = document.type().get(type)) return fail(error);
  if (type == json_type::object) {
    if (const auto error = document.get_object().get(topObject)) return fail(error);
    if (!object(topObject)) return false;
  } else if (type == json_type::array) {
    if (const auto error = document.get_array().get(topArray)) return fail(error);
    if (!array(topArray)) return false;
  } else {
    return fail("the top level is neither an object nor an array");
  }
  const bool atEnd = document.current_location().error() == simdjson::OUT_OF_BOUNDS;
  return atEnd || fail("something follows the end of the document");
}

bool JSONWalk::object(simdjson::ondemand::object& object) {
  ++depth_;
  handler_.startObject();
  for (auto element : object) {
    if (element.error() != simdjson::SUCCESS) return fail(element.error());
    auto&& field = std::move(element).value_unsafe();
    const char* const at = field.key().raw() - 1;
    std::string_view key;
    if (const auto error = field.unescaped_key().get(key)) return fail(error, at);
    handler_.key(key);
    if (!value(field.value())) return false;
  }
  handler_.endObject();
  --depth_;
  return true;
}

bool JSONWalk::array(simdjson::ondemand::array& array) {
  ++depth_;
  handler_.startArray();
  for (auto element : array) {
    if (element.error() != simdjson::SUCCESS) return fail(element.error());
    if (!value(element.value())) return false;
  }
  handler_.endArray();
  --depth_;
  return true;
}

bool JSONWalk::value(simdjson::ondemand::value& value) {
  json_type type{};
  if (const auto error = value.type().get(type)) return fail(error);
  const bool nests = type == json_type::object || type == json_type::array;
  if (nests && depth_ == kDepthLimit) return fail("nested too deeply");
  if (type == json_type::object) {
    simdjson::ondemand::object nested;
    if (const auto error = value.get_object().get(nested)) return fail(error);
    return object(nested);
  }
  if (type == json_type::array) {
    simdjson::ondemand::array nested;
    if (const auto error = value.get_array().get(nested)) return fail(error);
    return array(nested);
  }
  const char* const at = value.raw_json_token().data();
  const auto error = scalar(value, type);
  return error == simdjson::SUCCESS || fail(error, at);
}

error_code JSONWalk::scalar(simdjson::ondemand::value& value, json_type type) {
  if (type == json_type::number) return number(value);
  if (type == json_type::string) {
    std::string_view text;
    if (const auto error = value.get_string().get(text)) return error;
    handler_.string(text);
    return simdjson::SUCCESS;
  }
  bool flag = false;
  if (type == json_type::boolean) {
    if (const auto error = value.get_bool().get(flag)) return error;
    handler_.boolean(flag);
    return simdjson::SUCCESS;
  }
  if (const auto error = value.is_null().get(flag)) return error;
  handler_.null();
  return simdjson::SUCCESS;
}

/// What doesn't fit 64 bits is no number to `get_number`, and a real one to `get_double`.
error_code JSONWalk::number(simdjson::ondemand::value& value) {
  simdjson::ondemand::number number;
  double real = 0;
  if (value.get_number().get(number) != simdjson::SUCCESS) {
    if (const auto error = value.get_double().get(real)) return error;
    handler_.real(real);
    return simdjson::SUCCESS;
  }
  switch (number.get_number_type()) {
    case number_type::floating_point_number:
      handler_.real(number.get_double());
      break;
    case number_type::signed_integer:
      handler_.integer(number.get_int64());
      break;
    case number_type::unsigned_integer:
      handler_.integer(static_cast<std::int64_t>(number.get_uint64()));
      break;
  }
  return simdjson::SUCCESS;
}

bool JSONWalk::fail(const char* message) {
  failure_.message = message;
  if (document_->current_location().get(failure_.at) != simdjson::SUCCESS) failure_.at = nullptr;
  return false;
}

/// What lacks its end is reported at its beginning.
bool JSONWalk::fail(error_code error) {
  fail(simdjson::error_message(error));
  if (error == simdjson::INCOMPLETE_ARRAY_OR_OBJECT) failure_.at = nullptr;
  return false;
}

bool JSONWalk::fail(error_code error, const char* at) {
  const bool noValue = error == simdjson::INCORRECT_TYPE;
  failure_ = {noValue ? "there is no such value" : simdjson::error_message(error), at};
  return false;
}

}  // namespace quorvane
