#pragma once

#include <tav/Export.h>

#include <cstddef>
#include <string_view>

namespace BRIX {

// A sink that objects write themselves to.
class TAV_EXPORT ObjectOutput {
public:
    virtual ~ObjectOutput();
    virtual void write(const char* data, std::size_t size) = 0;

    void write(std::string_view text) { write(text.data(), text.size()); }
};

} // namespace BRIX
