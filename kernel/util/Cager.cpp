#include <tav/kernel/util/Cager.h>

namespace TAV {

std::stack<Cager*>& getCagers()
{
    static std::stack<Cager*> sCagers;
    return sCagers;
}

Cager::Cager()
{
    getCagers().push(this);
}

Cager::~Cager()
{
    getCagers().pop();
    if (!fHeld)
        return;
    for (auto const& [handle, release] : *fHeld)
        release(handle);
    delete fHeld;
}

void Cager::hold(void* handle, Release release)
{
    if (!fHeld)
        fHeld = new std::vector<std::pair<void*, Release>>;
    try {
        fHeld->emplace_back(handle, release);
    } catch (...) {
        release(handle);
        throw;
    }
}

} // namespace TAV
