#pragma once
// The descriptors that a run loop watches, in one epoll set: whoever waits looks at a single
// descriptor for all of them.
//
// A wait with a timeout sets a timer in the kernel, which costs as much as a message. So a short
// wait is ended by a timer that the set holds, and that goes on for the waits after it.

#include <glib.h>

#include <functional>
#include <map>
#include <memory>

#include "hosts/desktop/Descriptor.h"
#include "platform/Registration.h"

namespace quorvane::desktop {

class DescriptorSet : public std::enable_shared_from_this<DescriptorSet> {
 public:
  using Handler = std::function<void(GIOCondition)>;

  DescriptorSet();

  /// Can be read where one of them is ready.
  [[nodiscard]] int descriptor() const { return set_.get(); }
  /// Until the result is destroyed, which may be in the handler itself. Null where the set can't
  /// hold it: a file, or one that it holds already.
  [[nodiscard]] std::unique_ptr<Registration> add(int descriptor, GIOCondition condition,
                                                  Handler handler);
  /// Calls the handler of one that is ready; each has its turn. False: none was.
  bool handleOne();
  /// The same of one that is ready within two milliseconds.
  bool handleOneSoon();
  /// True where `descriptor` is ready within two milliseconds, and no other.
  [[nodiscard]] bool isAloneReadySoon(int descriptor);
  /// Leaves a descriptor out of the set until the result is destroyed; null where it isn't in it.
  [[nodiscard]] std::unique_ptr<Registration> rest(int descriptor);

 private:
  struct Entry {
    GIOCondition condition;
    Handler handler;
  };

  /// The descriptor's number may belong to another by now.
  [[nodiscard]] bool holds(int descriptor, const std::shared_ptr<Entry>& entry) const;
  bool control(int operation, int descriptor, GIOCondition condition) const;
  void startTimer();
  /// True where it was the timer that was ready.
  bool endTimer(int descriptor);
  bool handleOneWithin(int wait);

  Descriptor set_;
  Descriptor timer_;
  bool timerRuns_ = false;
  std::map<int, std::shared_ptr<Entry>> entries_;
};

}  // namespace quorvane::desktop
