#pragma once
// The connection to the framework's daemon: this process as its engine "quorvane".

#include <ibus.h>

#include <functional>
#include <memory>

#include "hosts/desktop/RunLoop.h"
#include "hosts/ibus/InputContexts.h"

namespace quorvane::ibus {

/// What happens in the panel.
struct PanelEvents {
  std::function<void(std::uint32_t index)> candidateClicked;  ///< counted from the first one shown
  std::function<void(bool forward)> cursorMoved;
  std::function<void(bool forward)> pageTurned;
  std::function<void(const std::string& name)> propertyActivated;
  std::function<void()> focusCame;  ///< the panel shows nothing of ours yet
};

class Engine final : public Wire {
 public:
  /// Throws std::runtime_error where no daemon runs or another process has the name already.
  Engine();
  ~Engine() override;
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  /// From now on keys come, from the run loop of the default context, one at a time: while one is
  /// handled no other is, even where the loop runs within. Both outlive the engine.
  void serve(InputContexts& contexts, PanelEvents events);
  /// Becomes the engine in use, as one before was that has died, unless another one is chosen.
  void comeBack();
  /// The daemon has gone, and with it all clients.
  std::function<void()> disconnected;

  void commit(std::u16string_view text) override;
  void deleteBefore(std::uint32_t codePoints) override;
  void showPreedit(std::u16string_view text, std::uint32_t caret) override;
  void forward(const Key& key) override;
  void passOn(const Key& key) override;
  /// Null: none.
  void showCandidates(IBusLookupTable* table);
  /// Empty: none.
  void showAnnotation(std::u16string_view text);
  void showProperties(IBusPropList* properties);

 private:
  struct Callbacks;
  class OwnContext;
  struct Unreference {
    void operator()(gpointer object) const { g_object_unref(object); }
  };

  IBusEngine* create(const char* name);
  void askForText();

  std::unique_ptr<OwnContext> context_;
  std::unique_ptr<IBusBus, Unreference> bus_;
  std::unique_ptr<IBusFactory, Unreference> factory_;
  IBusEngine* engine_ = nullptr;  ///< whose client has the focus
  unsigned created_ = 0;
  InputContexts* contexts_ = nullptr;
  PanelEvents events_;
};

}  // namespace quorvane::ibus
