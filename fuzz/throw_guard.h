// Counts every C++ exception thrown in the process, by interposing the runtime's throw entry
// point. In a jsoncpp built without exceptions each such throw is an abort, so a run over hostile
// input that counts zero throws shows that no build of the library aborts on it.
#ifndef VEXA_FUZZ_THROW_GUARD_H_
#define VEXA_FUZZ_THROW_GUARD_H_

#include <cstddef>

namespace vexa::fuzz {

// Throws seen so far.
size_t ThrowCount();
// When set, a throw aborts the process at once (with the stack intact), as it would on a device.
void SetAbortOnThrow(bool abort_on_throw);

}  // namespace vexa::fuzz

#endif  // VEXA_FUZZ_THROW_GUARD_H_
