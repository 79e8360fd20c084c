#pragma once
// Attaching to the segments that the main application creates, and the accessors of the tool record
// (layout: SharedLayout.h). The main application may be absent, go at any moment, or write
// anything: no record is a normal state, and nothing here touches a byte outside an attachment.
//
// The tool record stays attached from the first access until MasterCloseToolRecPtr, which each key
// event runs at its end; everything between makes no system call.

#include <array>
#include <span>
#include <utility>

#include "src/base/Instance.h"
#include "src/bridge/SharedLayout.h"

namespace quorvane {

struct SharedMemoryState {
  std::uint8_t* OPENGlobalToolCRecPtr = nullptr;  ///< the attachment; null: detached
  std::uint8_t* GlobalToolCRecPtr = nullptr;      ///< the attachment last seen
  std::uint32_t SETMENUFLAG = 0;
  AEToolEventSelectStruct* Global_ToolComRecPtr = nullptr;
  std::uint8_t* Global_MenuComRecPtr = nullptr;
  std::array<int, 8> shmid{-1, -1, -1, -1, -1, -1, -1, -1};  ///< GETSAFEMEMBLOCK's, by slot
};

// --- Attaching ---------------------------------------------------------------------------------

/// Null while the main application isn't running, without a system call or a log line, and null
/// where the segment is missing. The kShmFailed of a failing attach is handed back as it is.
void* GetSharedMemoryBlock(Instance& instance, std::uint32_t key);
/// Null also where the segment can't hold so many bytes.
std::uint8_t* AttachSegment(Instance& instance, std::uint32_t key, std::size_t size);

/// The tool record, or null. What can't hold a whole record is no record.
std::uint8_t* GetToolCRecPtr(Instance& instance);
/// The partner of every GetToolCRecPtr. The attachment stays.
void CloseToolRecPtr(Instance& instance, void* address);
/// Detaches, so that a main application that restarted is picked up at the next access.
void MasterCloseToolRecPtr(Instance& instance);
void DelegateCloseToolRecPtr(Instance& instance);
void MasterOpenToolRecPtr(Instance& instance);
void DelegateOpenToolRecPtr(Instance& instance);
void Wait_Install_DelegateOpenToolRecPtr(Instance& instance);
/// Detaches where the main application has gone. Always 0.
std::int32_t ISOPENTOOLREC(Instance& instance);
/// The attachment without any check.
std::uint8_t* Get_OPENGlobalToolCRecPtr(Instance& instance);

/// The groups of big-endian words in the tool record.
enum class FieldGroup : std::size_t {
  Fields = kFieldsOffset,
  StatusFlags = kStatusFlagsOffset,
  QorvStatus = kQorvStatusOffset,
  InteractiveScan = kInteractiveScanOffset,
};

/// The interactive text record, or null. What can't hold a whole record is none.
std::uint8_t* GetInteractiveTextRecordPtr(Instance& instance);
void CloseInteractiveTextRecordPtr(Instance& instance, const void* address);
/// Segment 896 for one use; null where there is none.
AEToolEventSelectStruct* GetAEToolEventSelectRecordPtr(Instance& instance);
AEToolEventSelectStruct* Get_ToolCRecPtAEToolEventRecordPtr(Instance& instance);
/// Detaches what was attached last. The global keeps its value.
void CloseAEToolEventSelectRecordPtr(Instance& instance, const void* ignored);
/// Segment 897, kMenuBufferSize bytes, for one use; null where there is none.
std::uint8_t* GetAEToolMenuSelectRecordPtr(Instance& instance);
void CloseAEToolMenuSelectRecordPtr(Instance& instance, const void* ignored);

/// A segment for as long as this lives: attached at the beginning, let go at the end. False where
/// there is none that holds its record.
template <auto Attach, auto Detach>
class Attachment {
 public:
  using Record = decltype(Attach(std::declval<Instance&>()));

  explicit Attachment(Instance& instance) : instance_(instance), address_(Attach(instance)) {}
  ~Attachment() {
    if (address_ != nullptr) Detach(instance_, address_);
  }
  Attachment(const Attachment&) = delete;
  Attachment& operator=(const Attachment&) = delete;

  explicit operator bool() const { return address_ != nullptr; }
  /// The other process may be writing there.
  [[nodiscard]] Record address() const { return address_; }
  [[nodiscard]] Instance& instance() const { return instance_; }

 private:
  Instance& instance_;
  Record address_;
};

using LastCommandRecord =
    Attachment<GetAEToolEventSelectRecordPtr, CloseAEToolEventSelectRecordPtr>;
using MenuBufferRecord = Attachment<GetAEToolMenuSelectRecordPtr, CloseAEToolMenuSelectRecordPtr>;

class InteractiveTextRecord
    : public Attachment<GetInteractiveTextRecordPtr, CloseInteractiveTextRecordPtr> {
 public:
  using Attachment::Attachment;
  /// All kInteractiveTextSize of them.
  [[nodiscard]] std::span<std::uint8_t> bytes() const {
    if (!*this) return {};
    return {address(), kInteractiveTextSize};
  }
};

/// The tool record, which stays attached behind this: see above. The only way to its words.
///
/// Without an attachment, or with an index outside the record, an accessor touches nothing and
/// gives 0: so also where a command to a window has detached the record meanwhile. `put`, `setBit`
/// and `clearBit` give the word as it lies in the record, big-endian. Bits count from 0; setting
/// and clearing one is a read and a write, not atomic.
class ToolRec : public Attachment<GetToolCRecPtr, CloseToolRecPtr> {
 public:
  using Attachment::Attachment;

  std::uint32_t get(std::uint32_t i, FieldGroup group = FieldGroup::Fields) const;
  std::uint32_t put(std::uint32_t i, std::uint32_t value,
                    FieldGroup group = FieldGroup::Fields) const;
  std::uint32_t setBit(std::uint32_t i, std::uint32_t bit,
                       FieldGroup group = FieldGroup::Fields) const;
  std::uint32_t clearBit(std::uint32_t i, std::uint32_t bit,
                         FieldGroup group = FieldGroup::Fields) const;
  /// What is attached now; empty: nothing.
  [[nodiscard]] std::span<std::uint8_t> bytes() const;
};

/// In a ToolRec of its own.
inline void putField(Instance& instance, std::uint32_t field, std::uint32_t value) {
  const ToolRec record(instance);
  record.put(field, value);
}

/// The creating attach: a cleared block, null, or the kShmFailed of a failing attach. The segment's
/// id stays in `shmid[slot]`.
void* GETSAFEMEMBLOCK(Instance& instance, std::uint32_t key, std::size_t size, std::uint32_t slot);
/// 0 or -1.
std::int32_t delete_segment(Instance& instance, int id);

// --- Fields, by their given names ----------------------------------------------------------------

inline std::uint32_t GET_TOOLCRECPTR(const ToolRec& record, std::uint32_t i) {
  return record.get(i);
}
inline std::uint32_t PUT_TOOLCRECPTR(const ToolRec& record, std::uint32_t i, std::uint32_t value) {
  return record.put(i, value);
}
inline std::uint32_t BSET_TOOLCRECPTR(const ToolRec& record, std::uint32_t i, std::uint32_t bit) {
  return record.setBit(i, bit);
}
inline std::uint32_t BCLR_TOOLCRECPTR(const ToolRec& record, std::uint32_t i, std::uint32_t bit) {
  return record.clearBit(i, bit);
}

inline std::uint32_t GET_TOOLCRECPTR_QORVSTATUS(const ToolRec& record, std::uint32_t i) {
  return record.get(i, FieldGroup::QorvStatus);
}
inline std::uint32_t PUT_TOOLCRECPTR_QORVSTATUS(const ToolRec& record, std::uint32_t i,
                                                std::uint32_t value) {
  return record.put(i, value, FieldGroup::QorvStatus);
}

inline std::uint32_t GET_TOOLCRECPTR_STATUSFLAGS(const ToolRec& record, std::uint32_t i) {
  return record.get(i, FieldGroup::StatusFlags);
}
inline std::uint32_t PUT_TOOLCRECPTR_STATUSFLAGS(const ToolRec& record, std::uint32_t i,
                                                 std::uint32_t value) {
  return record.put(i, value, FieldGroup::StatusFlags);
}

inline std::uint32_t GET_TOOLCRECPTR_INTERACTIVESCANPTR(const ToolRec& record, std::uint32_t i) {
  return record.get(i, FieldGroup::InteractiveScan);
}
inline std::uint32_t PUT_TOOLCRECPTR_INTERACTIVESCANPTR(const ToolRec& record, std::uint32_t i,
                                                        std::uint32_t value) {
  return record.put(i, value, FieldGroup::InteractiveScan);
}
inline std::uint32_t BSET_TOOLCRECPTR_INTERACTIVESCANPTR(const ToolRec& record, std::uint32_t i,
                                                         std::uint32_t bit) {
  return record.setBit(i, bit, FieldGroup::InteractiveScan);
}
inline std::uint32_t BCLR_TOOLCRECPTR_INTERACTIVESCANPTR(const ToolRec& record, std::uint32_t i,
                                                         std::uint32_t bit) {
  return record.clearBit(i, bit, FieldGroup::InteractiveScan);
}
/// The masked bit.
std::uint32_t BTST_TOOLCRECPTR_INTERACTIVESCANPTR(const ToolRec& record, std::uint32_t i,
                                                  std::uint32_t bit);
/// Despite its name, field `i` of the array, through a ToolRec of its own.
std::uint32_t GET_ONE_TOOLCRECPTR_QORVSTATUS(Instance& instance, std::uint32_t i);

std::uint32_t is_SETMENUFLAG(Instance& instance);
void set_SETMENUFLAG(Instance& instance, std::uint32_t value);

}  // namespace quorvane
