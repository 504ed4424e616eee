#pragma once

// Kernel-internal: a transaction that is cancelled unless it was ended.

#include <tav/kernel/deviant/Deviant.h>

#include <string>

namespace TAV::internal {

class ScopedTransaction {
public:
    ScopedTransaction(Deviant d, std::string const& name) : fDeviant(d) { fDeviant.beginTransaction(name); }
    ~ScopedTransaction()
    {
        if (fEnded)
            return;
        try {
            fDeviant.cancelTransaction();
        } catch (...) {
        }
    }
    ScopedTransaction(ScopedTransaction const&) = delete;
    ScopedTransaction& operator=(ScopedTransaction const&) = delete;

    bool commit()
    {
        fEnded = true;
        return fDeviant.commitTransaction();
    }
    void cancel()
    {
        fEnded = true;
        fDeviant.cancelTransaction();
    }

private:
    Deviant fDeviant;
    bool fEnded = false;
};

} // namespace TAV::internal
