// The shape that all assets share, written once: a typed record whose len is fixed, the
// copy of a record (everything after len), the identity of a flat record, the JSON frame
// ("enable" first, the asset's own members only when enabled), the payload copy and the merge
// by operation (left, right, or identity, with the "Source (...) is empty" errors).
//
// Derived classes (CRTP) name themselves through static members (kLogLabel, kClassName,
// kMergeName, kPayloadName, kRecordLen) and supply what is their own:
//   ReadResult ReadJson(JsonFieldReader& reader, Record& fresh)   the asset's keys
//   void WriteJson(Json::Value& json) const                     the asset's keys
// and may replace the defaults of FillPayload, CopyFromOperand and SetIdentity.
#ifndef VEXA_ASSETS_HW_ASSET_BASE_H_
#define VEXA_ASSETS_HW_ASSET_BASE_H_

#include <cstring>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "assets/hw_asset.h"
#include "assets/shared_record.h"
#include "formats/json_access.h"
#include "formats/keys.h"
#include "formats/merge_caps.h"
#include "platform/log.h"

namespace vexa {

// Records from this size on are held through a SharedRecord (copied on write), smaller ones
// inside the asset.
constexpr size_t kSharedRecordMinSize = 4 * 1024;

// What an asset's ReadJson decided about the fresh record.
enum class ReadResult {
  kStore,           // store the fresh record, enabled
  kLeaveUnchanged,  // refuse the section and keep the asset as it was
  kIdentity,        // refuse the section and switch the block off
};

template <typename Derived, typename Record>
class HwAssetBase : public HwAsset {
 public:
  using RecordType = Record;

  // Valid until the asset is next written: a large record may then move to another block.
  const Record& config() const { return record(); }

  // Copies enable and every field after len.
  void SetConfig(const Record& from) {
    Record* to = mutable_record();
    if (to != nullptr) CopyAfterLen(from, to);
  }

  void SetConfig(const Json::Value& config) override {
    JsonFieldReader reader(config, Derived::kLogLabel);
    const bool enable = reader.Bool(keys::kEnable);
    if (!reader.ok() || !enable) {
      derived().SetIdentity();
      return;
    }
    std::unique_ptr<Record> fresh = NewRecord();
    const ReadResult result = derived().ReadJson(reader, *fresh);
    if (result == ReadResult::kLeaveUnchanged) return;
    if (result == ReadResult::kIdentity || !reader.ok()) {
      derived().SetIdentity();
      return;
    }
    fresh->enable = true;
    StoreRecord(std::move(fresh));
  }

  void SetIdentity() override { ClearRecord(); }

  std::shared_ptr<Json::Value> AsJV() const override {
    auto json = std::make_shared<Json::Value>(Json::objectValue);
    (*json)[keys::kEnable] = record().enable;
    if (record().enable) derived().WriteJson(*json);
    return json;
  }

  std::shared_ptr<HwConfigPayload> AsPayload() const override {
    std::shared_ptr<Record> record(NewPayloadRecord());
    if (!record) {
      VKR_LOGE_AT(Derived::kLogLabel, "AsPayload", __LINE__, "hw_payload is null");
      return nullptr;
    }
    auto payload = std::make_shared<HwConfigPayload>();
    payload->size = kHwConfigPayloadSize;
    payload->name = Derived::kPayloadName;
    payload->config = std::move(record);
    payload->config_size = Derived::kRecordLen;
    return payload;
  }

 protected:
  HwAssetBase(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common)
      : HwAsset(asset_version, std::move(common)), record_() {
    if constexpr (kHeldShared) {
      static_assert(Derived::kRecordLen == sizeof(Record), "a shared block is one whole record");
    } else {
      record_.len = Derived::kRecordLen;
    }
  }

  static constexpr bool kHeldShared = sizeof(Record) >= kSharedRecordMinSize;

  const Record& record() const {
    if constexpr (kHeldShared) {
      return record_.get();
    } else {
      return record_;
    }
  }

  // The record to write into; null only when a shared block cannot be copied.
  Record* mutable_record() {
    if constexpr (kHeldShared) {
      return record_.Mutable();
    } else {
      return &record_;
    }
  }

  // Takes a whole record (len set) as the asset's own, without a copy where it is held shared.
  void StoreRecord(std::unique_ptr<Record> fresh) {
    if constexpr (kHeldShared) {
      record_.Share(std::move(fresh));
    } else {
      record_ = std::move(*fresh);
    }
  }

  // A zeroed record of this asset's length, on the heap (some records are large).
  static std::unique_ptr<Record> NewRecord() {
    auto record = std::make_unique<Record>();
    record->len = Derived::kRecordLen;
    return record;
  }

  static void CopyAfterLen(const Record& from, Record* to) {
    if (&from == to) return;
    const uint32_t len = to->len;
    *to = from;
    to->len = len;
  }

  void ClearRecord() {
    if constexpr (kHeldShared) {
      record_.Reset();  // reads as the zero record of its length
    } else if constexpr (std::is_trivially_copyable_v<Record>) {
      std::memset(static_cast<void*>(&record_), 0, sizeof(Record));  // no record-sized temporary
      record_.len = Derived::kRecordLen;
    } else {
      record_ = Record();
      record_.len = Derived::kRecordLen;
    }
  }

  // The merge of ops 1 (left) and 2 (right), and identity for any other op but the ones a
  // derived class handles itself. Call from the derived merge constructor's body, where
  // SetIdentity already dispatches to the derived class. `merge_name` names the merge in the
  // error line (an asset with several merges passes the one at hand).
  void MergeFromOperands(uint32_t op, const std::shared_ptr<Derived>& left,
                         const std::shared_ptr<Derived>& right,
                         const char* merge_name = Derived::kMergeName) {
    using namespace kiv_mode_merge_caps;
    if (op != kMergeOpLeftOperand && op != kMergeOpRightOperand) {
      derived().SetIdentity();
      return;
    }
    const bool take_left = op == kMergeOpLeftOperand;
    const std::shared_ptr<Derived>& source = take_left ? left : right;
    if (!source) {
      VKR_LOGE_AT(Derived::kLogLabel, Derived::kClassName, __LINE__,
                  "%s Merge Error: Source (%s operand) is empty", merge_name,
                  take_left ? "left" : "right");
      derived().SetIdentity();
      return;
    }
    derived().CopyFromOperand(*source);
  }

  // The payload's copy of the record, len set. A flat record is copied byte for byte into
  // uninitialised memory (payloads are made on every publication; the gamut record is 115 KiB);
  // a record that owns heap data starts zeroed and is filled by the FillPayload hook.
  Record* NewPayloadRecord() const {
    Record* copy = nullptr;
    if constexpr (std::is_trivially_copyable_v<Record>) {
      static_assert(&Derived::FillPayload == &HwAssetBase::FillPayload,
                    "a flat record's payload is a whole copy");
      copy = new (std::nothrow) Record;
      if (copy != nullptr) std::memcpy(static_cast<void*>(copy), &record(), sizeof(Record));
    } else {
      copy = new (std::nothrow) Record();
      if (copy != nullptr) derived().FillPayload(*copy);
    }
    if (copy != nullptr) copy->len = Derived::kRecordLen;
    return copy;
  }

  // Default hooks.
  void FillPayload(Record& out) const { CopyAfterLen(record(), &out); }
  void CopyFromOperand(const Derived& source) {
    if constexpr (kHeldShared) {
      record_ = source.record_;  // the operand's block, shared until either side writes
    } else {
      CopyAfterLen(source.config(), &record_);
    }
  }

  // A large record is reached through record() and mutable_record() only.
  std::conditional_t<kHeldShared, SharedRecord<Record, sizeof(Record)>, Record> record_;

 private:
  Derived& derived() { return static_cast<Derived&>(*this); }
  const Derived& derived() const { return static_cast<const Derived&>(*this); }
};

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_BASE_H_
