#pragma once

#include <tav/Export.h>

#include <stack>
#include <utility>
#include <vector>

namespace TAV {

class Model;

// Keeps models alive across a reflective write: code reached from the write
// can pin a model whose last handle is dropped inside it. Nesting is LIFO.
class TAV_EXPORT Cager {
public:
    Cager();
    ~Cager();
    Cager(Cager const&) = delete;
    Cager& operator=(Cager const&) = delete;

    // Holds a copy of the handle until this Cager ends.
    template <class M = Model>
    void addRef(M const& model)
    {
        hold(new M(model), [](void* p) { delete static_cast<M*>(p); });
    }

    std::size_t size() const { return fHeld ? fHeld->size() : 0; }
    bool operator==(Cager const& other) const { return this == &other; }

private:
    using Release = void (*)(void*);
    void hold(void* handle, Release release);

    std::vector<std::pair<void*, Release>>* fHeld = nullptr;
};

// Innermost Cager on top; not locked, one thread at a time.
TAV_EXPORT std::stack<Cager*>& getCagers();

} // namespace TAV
