// A large record held through a shared pointer and copied only when written while shared. The
// assets that name one shared table, and a merge that takes an operand's record, then hold one
// block between them instead of a copy each (a gamut record is 115 KiB). An empty holder reads
// as the zero record of its length.
#ifndef VEXA_ASSETS_SHARED_RECORD_H_
#define VEXA_ASSETS_SHARED_RECORD_H_

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace vexa {

template <typename Record, uint32_t kLen>
class SharedRecord {
  static_assert(std::is_trivially_copyable_v<Record>, "blocks are copied byte for byte");

 public:
  const Record& get() const { return block_ ? *block_ : Zero(); }

  // The record to write into: the block itself when this holder alone has it, else a private
  // copy of what it reads as. Null when that copy cannot be allocated (nothing changes then).
  Record* Mutable() {
    if (block_ && block_.use_count() == 1) return block_.get();
    std::shared_ptr<Record> own = Allocate();
    if (!own) return nullptr;
    std::memcpy(static_cast<void*>(own.get()), &get(), sizeof(Record));
    block_ = std::move(own);
    return block_.get();
  }

  // Holds `block` from now on; its len must be kLen. An empty pointer reads as zero.
  void Share(std::shared_ptr<Record> block) { block_ = std::move(block); }
  void Reset() { block_.reset(); }
  bool shares(const SharedRecord& other) const { return block_ && block_ == other.block_; }

 private:
  static std::shared_ptr<Record> Allocate() {
    return std::shared_ptr<Record>(new (std::nothrow) Record);  // filled by the caller
  }

  static const Record& Zero() {
    static const Record* const kZero = [] {
      auto* record = new Record();
      record->len = kLen;
      return record;
    }();
    return *kZero;
  }

  std::shared_ptr<Record> block_;
};

}  // namespace vexa

#endif  // VEXA_ASSETS_SHARED_RECORD_H_
