#pragma once
// What text fields bring to a platform, for as long as the platform lives. Until an application is
// connected nothing is typed and nothing shown.

#include "hosts/field/AnnotationWindow.h"
#include "hosts/field/CarbonEvents.h"
#include "hosts/field/EventQueue.h"
#include "hosts/field/InputMethodKit.h"
#include "platform/Platform.h"

namespace quorvane::field {

struct FieldParts {
  EventQueue events;
  CarbonEvents carbonEvents;
  InputMethodKit inputMethodKit;
  AnnotationWindow annotationWindow;
  const TextApplication* application = nullptr;
  Seconds longestWithinKey{2};  ///< see ClientParts

  [[nodiscard]] ClientParts forPlatform() {
    return {.carbonEvents = carbonEvents,
            .eventPosting = events,
            .inputMethodKit = inputMethodKit,
            .annotationWindow = {&annotationWindow, &annotationWindow},
            .isWithinKey = [this] { return application && application->delivering(); },
            .longestWithinKey = longestWithinKey};
  }
  void connect(TextApplication& served, Screens& screens, Application& system) {
    application = &served;
    carbonEvents.connect(served);
    inputMethodKit.connect(
        served, [&screens] { return screens.screens(); },
        [&system] { return system.operatingSystemVersion(); });
  }
};

}  // namespace quorvane::field
