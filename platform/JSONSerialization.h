#pragma once
// NSJSONSerialization, as a stream of events: nothing is kept that the reader doesn't keep. JSON as
// in RFC 8259; the top level is an object or an array.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// Told of everything in a document, in order. Texts are valid UTF-8 and live for the call only;
/// they may hold any character, NUL included.
class JSONHandler {
 public:
  virtual ~JSONHandler() = default;

  virtual void startObject() = 0;
  virtual void endObject() = 0;
  virtual void startArray() = 0;
  virtual void endArray() = 0;
  virtual void key(std::string_view text) = 0;
  virtual void string(std::string_view text) = 0;
  /// A number without fraction and exponent, cut to its low 64 bits.
  virtual void integer(std::int64_t number) = 0;
  virtual void real(double number) = 0;
  virtual void boolean(bool value) = 0;
  virtual void null() = 0;
};

struct JSONError {
  enum class Kind { Missing, Unreadable, Malformed };
  Kind kind = Kind::Malformed;
  std::string message;
  std::uint64_t line = 0;    ///< from 1; 0 where it can't be told
  std::uint64_t column = 0;  ///< from 1, in bytes
};

class JSONSerialization {
 public:
  virtual ~JSONSerialization() = default;

  /// Reads the file to its end. With an error the handler may have been told of a part, which then
  /// counts for nothing. Nesting is limited to 1024.
  virtual std::optional<JSONError> JSONObjectWithStream(const std::string& path,
                                                        JSONHandler& handler) = 0;
};

}  // namespace quorvane
