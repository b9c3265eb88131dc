// An inverse-gamma asset that counts calls of its payload export and can be told to yield none.
// Its source is compiled without RTTI like the library, whose asset classes carry no type info.
#ifndef VEXA_TESTS_SUPPORT_PAYLOAD_SPY_H_
#define VEXA_TESTS_SUPPORT_PAYLOAD_SPY_H_

#include <memory>

#include "assets/hw_asset_igc.h"

namespace vexa::testing {

struct PayloadSpyCounter {
  int calls = 0;
};

// Each payload it yields carries the call's number (1, 2, ...) in `config_size`.
std::shared_ptr<HwAssetIGC> MakePayloadSpy(bool yields, std::shared_ptr<PayloadSpyCounter> counter);

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_PAYLOAD_SPY_H_
