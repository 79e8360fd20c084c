// The file, as marisa 0.2 and its successors write it, all numbers little-endian:
//
//     "We love Marisa." and a NUL
//     level          tree, ends of words, links, labels, upper digits of links, tail,
//                    the next level if there are links and no tail, cache, two numbers
//
// A label is a byte, or a link to a text: to the tail, or to a node of the next level, whose text
// is read from there up to the root. Arrays have their size before them and fill up 8 bytes. What
// only makes look-ups fast is passed over.

#include "src/completion/SavedTrie.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>

namespace quorvane {
namespace {

using Bytes = std::span<const std::uint8_t>;

static_assert(std::endian::native == std::endian::little, "the library writes as the machine does");

constexpr std::string_view kSavedBy{"We love Marisa.\0", 16};
constexpr int kMostLevels = 127;
constexpr std::size_t kLongestWord = 1024;
/// Of all labels together: a small file can mean a text without end.
constexpr std::size_t kMostBytes = std::size_t{64} << 20;

void mustHold(bool condition, const char* otherwise) {
  if (!condition) throw DamagedTrie(otherwise);
}

class Reader {
 public:
  explicit Reader(Bytes rest) : rest_(rest) {}

  [[nodiscard]] bool atEnd() const { return rest_.empty(); }
  Bytes take(std::uint64_t size) {
    mustHold(size <= rest_.size(), "it ends too early");
    const Bytes taken = rest_.first(size);
    rest_ = rest_.subspan(size);
    return taken;
  }
  template <class Number>
  Number number() {
    Number value = 0;
    std::memcpy(&value, take(sizeof(value)).data(), sizeof(value));
    return value;
  }
  Bytes array() {
    const Bytes taken = take(number<std::uint64_t>());
    take((8 - taken.size() % 8) % 8);
    return taken;
  }

 private:
  Bytes rest_;
};

class Bits {
 public:
  explicit Bits(Bytes bytes) : bytes_(bytes), size_(bytes.size() * 8) {}
  explicit Bits(Reader& reader) : bytes_(reader.array()), size_(reader.number<std::uint32_t>()) {
    mustHold(size_ <= bytes_.size() * 8, "fewer bits than it says");
    for (std::size_t i = 0; i < size_; ++i) ones_ += (*this)[i] ? 1 : 0;
    mustHold(ones_ == reader.number<std::uint32_t>(), "other bits than it says");
    for (int index = 0; index < 3; ++index) reader.array();
  }

  [[nodiscard]] std::size_t size() const { return size_; }
  [[nodiscard]] std::size_t ones() const { return ones_; }
  bool operator[](std::size_t at) const {
    mustHold(at < size_, "outside of the bits");
    return (bytes_[at / 8] >> at % 8 & 1) != 0;
  }

 private:
  Bytes bytes_;
  std::size_t size_;
  std::size_t ones_ = 0;
};

/// NarrowNumbers of a few bits each.
class NarrowNumbers {
 public:
  explicit NarrowNumbers(Reader& reader)
      : bits_(reader.array()), width_(reader.number<std::uint32_t>()) {
    reader.number<std::uint32_t>();  // the mask, which the width says too
    size_ = reader.number<std::uint64_t>();
    mustHold(width_ <= 32, "numbers too wide");
  }

  [[nodiscard]] std::uint64_t size() const { return size_; }
  std::uint32_t operator[](std::size_t index) const {
    std::uint32_t value = 0;
    for (std::size_t bit = 0; bit < width_; ++bit) {
      value |= (bits_[index * width_ + bit] ? 1U : 0U) << bit;
    }
    return value;
  }

 private:
  Bits bits_;
  std::uint32_t width_;
  std::uint64_t size_ = 0;
};

/// The word that is being put together.
class Text {
 public:
  void push(std::uint8_t byte) {
    mustHold(text_.size() < kLongestWord && written_ < kMostBytes, "words without bounds");
    ++written_;
    text_ += static_cast<char>(byte);
  }
  void cut(std::size_t size) { text_.resize(size); }
  [[nodiscard]] const std::string& get() const { return text_; }

 private:
  std::string text_;
  std::size_t written_ = 0;
};

/// Texts one after the other, each up to a NUL or, where texts hold NULs, up to a flagged byte.
class Tail {
 public:
  explicit Tail(Reader& reader) : bytes_(reader.array()), ends_(reader) {
    mustHold(ends_.size() == 0 || ends_.size() == bytes_.size(), "a tail without ends");
  }

  [[nodiscard]] bool empty() const { return bytes_.empty(); }
  void append(std::size_t at, Text& text) const {
    bool isEnd = false;
    for (const std::size_t start = at; !isEnd; ++at) {
      mustHold(at < bytes_.size(), "outside of the tail");
      const bool isNul = ends_.size() == 0 && bytes_[at] == 0;
      mustHold(!isNul || at > start, "an empty label");
      if (!isNul) text.push(bytes_[at]);
      isEnd = ends_.size() == 0 ? isNul : ends_[at];
    }
  }

 private:
  Bytes bytes_;
  Bits ends_;
};

class Level {
 public:
  Level(Reader& reader, int depth)
      : tree_(reader),
        ends_(reader),
        links_(reader),
        bases_(reader.array()),
        tops_(reader),
        tail_(reader) {
    mustHold(depth <= kMostLevels, "too many levels");
    mustHold(links_.size() == bases_.size() && links_.ones() == tops_.size(), "labels are missing");
    readTree();
    readLabels();
    if (links_.ones() > 0 && tail_.empty()) next_ = std::make_unique<Level>(reader, depth + 1);
    reader.array();
    reader.number<std::uint32_t>();
    flags_ = reader.number<std::uint32_t>();
  }

  [[nodiscard]] int flags() const { return static_cast<int>(flags_); }
  /// Visits all words below `node`, whose own text is `text`. As deep as a word is long.
  void addWords(std::size_t node, Text& text, TextPile& words) const {
    if (ends_[node]) words.add(text.get());
    const std::size_t size = text.get().size();
    for (std::size_t child = children_[node]; child < children_[node + 1]; ++child) {
      appendLabel(child, text);
      addWords(child, text, words);
      text.cut(size);
    }
  }

 private:
  /// Bits "10", then a 1 for each child of a node and a 0 behind its last, at the end another 0.
  void readTree() {
    const std::size_t nodes = bases_.size();
    mustHold(nodes > 0 && tree_.size() == 2 * nodes + 2 && tree_[0] && !tree_[1], "no tree");
    parents_.push_back(0);
    std::size_t at = 2;
    for (std::size_t node = 0; node < nodes; ++node) {
      mustHold(node < parents_.size(), "a node without a parent");
      children_.push_back(parents_.size());
      while (tree_[at++]) parents_.push_back(static_cast<std::uint32_t>(node));
    }
    children_.push_back(parents_.size());
    mustHold(parents_.size() == nodes && !tree_[at], "nodes are missing");
  }

  void readLabels() {
    std::size_t link = 0;
    for (std::size_t node = 0; node < bases_.size(); ++node) {
      labels_.push_back(bases_[node] | (links_[node] ? std::uint64_t{tops_[link++]} << 8 : 0));
    }
  }

  void appendLabel(std::size_t node, Text& text) const {
    if (!links_[node]) {
      text.push(static_cast<std::uint8_t>(labels_[node]));
    } else if (next_) {
      next_->appendPath(labels_[node], text);
    } else {
      tail_.append(labels_[node], text);
    }
  }

  /// Parents come before their children, so that this comes to the root.
  void appendPath(std::size_t node, Text& text) const {
    mustHold(node > 0 && node < parents_.size(), "a link leads outside");
    for (; node != 0; node = parents_[node]) appendLabel(node, text);
  }

  Bits tree_;
  Bits ends_;
  Bits links_;
  Bytes bases_;
  NarrowNumbers tops_;
  Tail tail_;
  std::vector<std::uint32_t> parents_;  ///< of each node; the root's is of no use
  std::vector<std::size_t> children_;   ///< the first of each node; the last ends before the next
  std::vector<std::uint64_t> labels_;
  std::unique_ptr<Level> next_;
  std::uint32_t flags_ = 0;
};

}  // namespace

SavedWords wordsOfSavedTrie(Bytes file) {
  Reader reader(file);
  mustHold(std::ranges::equal(reader.take(kSavedBy.size()), kSavedBy), "no saved trie");
  const Level level(reader, 1);
  mustHold(reader.atEnd(), "something follows it");
  SavedWords saved{{}, level.flags()};
  Text text;
  level.addWords(0, text, saved.words);
  return saved;
}

}  // namespace quorvane
