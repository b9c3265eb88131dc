#include "support/payload_spy.h"

#include <utility>

namespace vexa::testing {
namespace {

class PayloadSpy : public HwAssetIGC {
 public:
  PayloadSpy(bool yields, std::shared_ptr<PayloadSpyCounter> counter)
      : HwAssetIGC(0, nullptr), yields_(yields), counter_(std::move(counter)) {}

  std::shared_ptr<HwConfigPayload> AsPayload() const override {
    const int call = ++counter_->calls;
    if (!yields_) return nullptr;
    std::shared_ptr<HwConfigPayload> payload = HwAssetIGC::AsPayload();
    payload->config_size = static_cast<uint32_t>(call);
    return payload;
  }

 private:
  bool yields_;
  std::shared_ptr<PayloadSpyCounter> counter_;
};

}  // namespace

std::shared_ptr<HwAssetIGC> MakePayloadSpy(bool yields, std::shared_ptr<PayloadSpyCounter> counter) {
  return std::make_shared<PayloadSpy>(yields, std::move(counter));
}

}  // namespace vexa::testing
