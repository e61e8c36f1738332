// Alone in its object file, so that a test build can link another in its place.
#include "win32/EventGuard.h"

namespace vextrel::detail {

void ThrowInjectedFault(const wchar_t*) {}

} // namespace vextrel::detail
