#include <tav/kernel/util/Cleanup.h>

namespace TAV {

Cleanup::~Cleanup() = default;

} // namespace TAV
