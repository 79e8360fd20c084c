#pragma once
// Owner of everything that is global to one running input method: the platform it stands on and one
// instance of each module's state. `main` makes one; every test case makes its own.

#include <cstddef>
#include <memory>
#include <type_traits>
#include <vector>

#include "platform/Platform.h"

namespace quorvane {

class Instance {
 public:
  explicit Instance(const Platform& platform) : platform_(platform) {}
  /// States go in the reverse order of their making.
  ~Instance();
  Instance(const Instance&) = delete;
  Instance& operator=(const Instance&) = delete;

  [[nodiscard]] Platform& platform() { return platform_; }

  /// The one instance of `State`, made on first use: with this instance if it wants one.
  template <class State>
  State& state() {
    const std::size_t index = stateIndex<State>;
    if (index < states_.size() && states_[index].get() != nullptr) {
      return static_cast<Holder<State>&>(*states_[index]).state;
    }
    return make<State>(index);
  }

 private:
  struct AnyHolder {
    virtual ~AnyHolder() = default;
  };
  template <class State>
  struct Holder : AnyHolder {
    explicit Holder(Instance& instance) requires std::is_constructible_v<State, Instance&>
        : state(instance) {}
    explicit Holder(Instance& /*process*/) requires(!std::is_constructible_v<State, Instance&>) {}
    State state{};
  };

  static std::size_t nextStateIndex();
  template <class State>
  static inline const std::size_t stateIndex = nextStateIndex();

  template <class State>
  State& make(std::size_t index) {
    auto holder = std::make_unique<Holder<State>>(*this);
    State& state = holder->state;
    if (states_.size() <= index) states_.resize(index + 1);
    states_[index] = std::move(holder);
    order_.push_back(index);
    return state;
  }

  Platform platform_;
  std::vector<std::unique_ptr<AnyHolder>> states_;
  std::vector<std::size_t> order_;
};

/// Sets a flag for as long as it lives, whatever way the scope is left.
template <class Flag>
class FlagGuard {
 public:
  explicit FlagGuard(Flag& flag) : flag_(flag) { flag_ = Flag{1}; }
  ~FlagGuard() { flag_ = Flag{0}; }
  FlagGuard(const FlagGuard&) = delete;
  FlagGuard& operator=(const FlagGuard&) = delete;

 private:
  Flag& flag_;
};

}  // namespace quorvane
