#pragma once

#include <tav/Export.h>

namespace TAV {

// Root of every tracked kernel object; leak tracking hooks in here.
class TAV_EXPORT Cleanup {
public:
    Cleanup() = default;
    Cleanup(Cleanup const&) = default;
    Cleanup& operator=(Cleanup const&) = default;
    virtual ~Cleanup();
};

} // namespace TAV
