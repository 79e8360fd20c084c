#pragma once
// A table that was made from files and may lie in a snapshot.

#include <functional>
#include <utility>

#include "src/completion/Snapshot.h"

namespace quorvane {

template <class Table>
class Cached {
 public:
  /// `makeAnew` makes a table in memory of its own, where nothing can be damaged.
  Cached(Table table, std::function<Table()> makeAnew)
      : table_(std::move(table)), makeAnew_(std::move(makeAnew)) {}

  /// question(table). Where the snapshot proves damaged, asks a new table instead.
  template <class Question>
  auto ask(Question question) {
    try {
      return question(std::as_const(table_));
    } catch (const DamagedSnapshot&) {
      table_ = makeAnew_();
    }
    return question(std::as_const(table_));
  }

 private:
  Table table_;
  std::function<Table()> makeAnew_;
};

}  // namespace quorvane
