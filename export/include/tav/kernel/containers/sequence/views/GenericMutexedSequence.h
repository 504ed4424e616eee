#pragma once

// A sequence shared between threads: each forwarded call holds the caller's
// mutex, shared for reading, exclusive for writing. Its iterators are the
// wrapped sequence's own and walk unguarded.

#include <tav/kernel/containers/sequence/SequenceIntf.h>

namespace boost {
class shared_mutex;
}

namespace TAV {

class TAV_EXPORT GenericMutexedSequence : public Generic::SequenceIntf {
public:
    // The mutex stays the caller's and must outlive this sequence.
    GenericMutexedSequence(Generic::SequencePtr aWrapped, boost::shared_mutex& aMutex);
    GenericMutexedSequence(GenericMutexedSequence const&) = delete;
    GenericMutexedSequence& operator=(GenericMutexedSequence const&) = delete;
    ~GenericMutexedSequence() override;

    TAV_SEQUENCE_STORAGE_OPERATIONS
    bool generic_empty(Deviant const& aDeviant) const override;
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override;

    Generic::SequenceIntf* wrapped() const { return fWrapped.get(); }

private:
    Generic::SequenceIntf& target() const;

    Generic::SequencePtr fWrapped;
    boost::shared_mutex& fMutex;
};

} // namespace TAV
