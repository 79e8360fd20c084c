#pragma once
// Reads a JSON document of a known shape, such as {{[ : an object of objects of arrays. Whatever
// has another shape is left out with all that it holds.

#include <string_view>

#include "platform/JSONSerialization.h"

namespace quorvane {

class JSONShape : public JSONHandler {
 public:
  void startObject() final { start('{'); }
  void startArray() final { start('['); }
  void endObject() final { end(); }
  void endArray() final { end(); }
  void key(std::string_view text) final {
    if (outside_ == 0) keyAt(depth_, text);
  }
  void string(std::string_view text) final {
    if (outside_ == 0) stringAt(depth_, text);
  }
  void integer(std::int64_t number) final {
    if (outside_ == 0) integerAt(depth_, number);
  }
  void real(double number) final {
    if (outside_ == 0) realAt(depth_, number);
  }
  void boolean(bool value) final { integer(value ? 1 : 0); }
  void null() final {
    if (outside_ == 0) foreignAt(depth_);
  }

 protected:
  explicit JSONShape(std::string_view shape) : shape_(shape) {}

  // What is found, and how many containers it lies in. A boolean is an integer, 0 or 1.
  virtual void keyAt(std::size_t depth, std::string_view text) = 0;
  virtual void stringAt(std::size_t depth, std::string_view text) = 0;
  virtual void integerAt(std::size_t depth, std::int64_t /*number*/) { foreignAt(depth); }
  virtual void realAt(std::size_t depth, double /*number*/) { foreignAt(depth); }
  /// Something that no hook takes, or that the shape leaves out.
  virtual void foreignAt(std::size_t /*depth*/) {}
  /// A container of the shape was left; `depth` is the one inside of it.
  virtual void leave(std::size_t /*depth*/) {}

 private:
  void start(char container) {
    if (outside_ > 0) {
      ++outside_;
    } else if (depth_ < shape_.size() && shape_[depth_] == container) {
      ++depth_;
    } else {
      foreignAt(depth_);
      ++outside_;
    }
  }
  void end() {
    if (outside_ > 0) {
      --outside_;
    } else {
      leave(depth_--);
    }
  }

  std::string_view shape_;
  std::size_t depth_ = 0;
  std::size_t outside_ = 0;
};

}  // namespace quorvane
