#pragma once
// Starts a server again that was killed or has crashed, where nobody else would do it.

#include <functional>

namespace quorvane {

/// Has `serve` run in a process of its own, a child of this one, for as long as it ends by
/// accident. Returns in both: what `serve` has returned. Before anything else is started in this
/// process.
int keepRunning(const std::function<int(bool again)>& serve);

}  // namespace quorvane
