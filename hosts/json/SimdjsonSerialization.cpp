#include "hosts/json/SimdjsonSerialization.h"

#include <simdjson.h>

#include <new>

#include "hosts/json/JSONPlace.h"
#include "hosts/json/JSONWalk.h"

namespace quorvane {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

JSONError malformed(std::string_view json, const JSONWalk::Failure& failure) {
  const std::size_t at = failure.at != nullptr ? static_cast<std::size_t>(failure.at - json.data())
                                               : placeOfBadText(json);
  const JSONPlace place = placeInText(json, at);
  return {JSONError::Kind::Malformed, failure.message, place.line, place.column};
}

std::optional<JSONError> parse(simdjson::padded_string_view text, JSONHandler& handler) {
  simdjson::ondemand::parser parser;
  simdjson::ondemand::document document;
  auto error = parser.allocate(text.size(), JSONWalk::kDepthLimit + 2);
  if (error == simdjson::SUCCESS) error = parser.iterate(text).get(document);
  if (error != simdjson::SUCCESS) {
    return malformed(text, {simdjson::error_message(error), nullptr});
  }
  JSONWalk walk(handler);
  if (walk.document(document)) return {};
  return malformed(text, walk.failure());
}

/// The library looks ahead, as far as what was read may be looked at.
simdjson::padded_string_view paddedText(const FileData& data) {
  static_assert(simdjson::SIMDJSON_PADDING <= FileData::kReadableBehind);
  const auto bytes = data.bytes();
  std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  return simdjson::padded_string_view(text, text.size() + FileData::kReadableBehind);
}

}  // namespace

std::optional<JSONError> SimdjsonSerialization::JSONObjectWithStream(const std::string& path,
                                                                     JSONHandler& handler) {
  using Kind = JSONError::Kind;
  try {
    const auto data = files_.dataWithContentsOfFile(path);
    if (data != nullptr) return parse(paddedText(*data), handler);
  } catch (const std::bad_alloc&) {
    return JSONError{Kind::Unreadable, "there isn't memory enough for it"};
  }
  if (files_.attributesOfItemAtPath(path)) return JSONError{Kind::Unreadable, "can't be read"};
  return JSONError{Kind::Missing, "there is no such file"};
}

}  // namespace quorvane
