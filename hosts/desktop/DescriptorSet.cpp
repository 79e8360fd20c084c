#include "hosts/desktop/DescriptorSet.h"

#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>
#include <utility>

namespace quorvane::desktop {
namespace {

// Waits of epoll.
constexpr int kNoTime = 0;
constexpr int kUntilTimer = -1;

class Ending final : public Registration {
 public:
  explicit Ending(std::function<void()> end) : end_(std::move(end)) {}
  ~Ending() override { end_(); }
  Ending(const Ending&) = delete;
  Ending& operator=(const Ending&) = delete;

 private:
  std::function<void()> end_;
};

}  // namespace

DescriptorSet::DescriptorSet()
    : set_(epoll_create1(EPOLL_CLOEXEC)),
      timer_(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)) {
  if (!control(EPOLL_CTL_ADD, timer_.get(), G_IO_IN)) {
    throw std::system_error(errno, std::generic_category(), "no run loop");
  }
}

std::unique_ptr<Registration> DescriptorSet::add(int descriptor, GIOCondition condition,
                                                 Handler handler) {
  if (!control(EPOLL_CTL_ADD, descriptor, condition)) return nullptr;
  auto entry = std::make_shared<Entry>(Entry{condition, std::move(handler)});
  entries_.insert_or_assign(descriptor, entry);
  return std::make_unique<Ending>([set = weak_from_this(), descriptor, entry] {
    const auto self = set.lock();
    if (self == nullptr || !self->holds(descriptor, entry)) return;
    self->entries_.erase(descriptor);
    self->control(EPOLL_CTL_DEL, descriptor, {});
  });
}

bool DescriptorSet::handleOne() { return handleOneWithin(kNoTime); }

bool DescriptorSet::handleOneSoon() {
  startTimer();
  return handleOneWithin(kUntilTimer);
}

bool DescriptorSet::handleOneWithin(int wait) {
  // One alone: what its handler ends is then in no list any more.
  epoll_event event{};
  if (epoll_wait(set_.get(), &event, 1, wait) != 1 || endTimer(event.data.fd)) return false;
  const auto found = entries_.find(event.data.fd);
  if (found == entries_.end()) return false;
  const std::shared_ptr<Entry> entry = found->second;
  entry->handler(static_cast<GIOCondition>(event.events));
  return true;
}

bool DescriptorSet::isAloneReadySoon(int descriptor) {
  startTimer();
  std::array<epoll_event, 2> events{};
  const int ready =
      epoll_wait(set_.get(), events.data(), static_cast<int>(events.size()), kUntilTimer);
  return ready == 1 && !endTimer(events.front().data.fd) && events.front().data.fd == descriptor;
}

void DescriptorSet::startTimer() {
  if (timerRuns_) return;
  constexpr itimerspec kSoon{{}, {0, 2'000'000}};
  timerRuns_ = timerfd_settime(timer_.get(), 0, &kSoon, nullptr) == 0;
}

bool DescriptorSet::endTimer(int descriptor) {
  if (descriptor != timer_.get()) return false;
  std::uint64_t times = 0;
  timerRuns_ = read(timer_.get(), &times, sizeof(times)) < 0 && timerRuns_;
  return true;
}

std::unique_ptr<Registration> DescriptorSet::rest(int descriptor) {
  const auto found = entries_.find(descriptor);
  if (found == entries_.end()) return nullptr;
  control(EPOLL_CTL_DEL, descriptor, {});
  return std::make_unique<Ending>([set = weak_from_this(), descriptor, entry = found->second] {
    const auto self = set.lock();
    if (self == nullptr || !self->holds(descriptor, entry)) return;
    self->control(EPOLL_CTL_ADD, descriptor, entry->condition);
  });
}

bool DescriptorSet::holds(int descriptor, const std::shared_ptr<Entry>& entry) const {
  const auto found = entries_.find(descriptor);
  return found != entries_.end() && found->second == entry;
}

// Poll and epoll name the conditions by the same bits.
bool DescriptorSet::control(int operation, int descriptor, GIOCondition condition) const {
  epoll_event event{};
  event.events = condition;
  event.data.fd = descriptor;
  return epoll_ctl(set_.get(), operation, descriptor, &event) == 0;
}

}  // namespace quorvane::desktop
