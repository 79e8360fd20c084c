#include "tools/checker/CorrectionWindow.h"

#include <algorithm>
#include <limits>

namespace quorvane::checker {

namespace {

constexpr std::size_t kCharacterHeight = 16;
constexpr std::size_t kCharacterWidth = 8;
constexpr Extent kDocumentWindow{160, 320};

constexpr std::uint32_t kNothingOpen = 0;
constexpr std::uint32_t kPopupOpen = 1;
constexpr std::uint32_t kDocumentWindowOpen = 2;

std::int16_t highHalf(std::uint32_t word) { return static_cast<std::int16_t>(word >> 16); }
std::int16_t lowHalf(std::uint32_t word) { return static_cast<std::int16_t>(word); }
std::uint32_t packed(std::int16_t high, std::int16_t low) {
  return std::uint32_t{static_cast<std::uint16_t>(high)} << 16 | static_cast<std::uint16_t>(low);
}

std::int16_t beyond(std::int16_t start, std::size_t points) {
  constexpr int kLast = std::numeric_limits<std::int16_t>::max();
  const int room = kLast - start;
  return static_cast<std::int16_t>(
      points < static_cast<std::size_t>(room) ? start + static_cast<int>(points) : kLast);
}

}  // namespace

void CorrectionWindow::openPopup(const Extent& characters, std::uint32_t client) {
  client_ = client;
  place({characters.height * kCharacterHeight, characters.width * kCharacterWidth});
  show(State::Popup);
}

void CorrectionWindow::accompany(std::uint32_t client) {
  if (state_ == State::None && client != 0) {
    client_ = client;
    place(kDocumentWindow);
    show(State::Document);
  } else if (state_ == State::Hidden && client == client_) {
    show(State::Document);
  }
}

void CorrectionWindow::close() {
  const bool document = state_ == State::Document || state_ == State::Hidden;
  show(document ? State::Dismissed : State::None);
}

void CorrectionWindow::showOrHide() {
  if (state_ == State::Document) return show(State::Hidden);
  if (state_ == State::Hidden) show(State::Document);
}

bool CorrectionWindow::holds(std::uint32_t packedPoint) const {
  const std::int16_t vertical = highHalf(packedPoint);
  const std::int16_t horizontal = lowHalf(packedPoint);
  return isOpen() && vertical >= place_.top && vertical < place_.bottom &&
         horizontal >= place_.left && horizontal < place_.right;
}

void CorrectionWindow::place(const Extent& points) {
  const std::uint32_t position = tool_.get(At::TextPosition);
  const std::int16_t top = highHalf(position);
  const std::int16_t left = lowHalf(position);
  place_ = {top, left, beyond(top, points.height), beyond(left, points.width)};
  tool_.put(At::WindowTopLeft, packed(left, top));
  tool_.put(At::WindowBottomRight, packed(place_.right, place_.bottom));
}

/// The window's kind comes last when it opens: who sees it finds the rest in its place.
void CorrectionWindow::show(State state) {
  state_ = state;
  if (isOpen()) tool_.put(At::WindowClient, client_);
  tool_.put(At::WindowOpen, state == State::Popup      ? kPopupOpen
                            : state == State::Document ? kDocumentWindowOpen
                                                       : kNothingOpen);
  if (!isOpen()) tool_.put(At::WindowClient, 0);
}

}  // namespace quorvane::checker
