#pragma once

// A derived sequence that may be read but not changed: reads go to the view it
// shows, every write is refused with "This derived sequence is read-only!".

#include <tav/kernel/containers/sequence/SequenceIntf.h>

namespace TAV {

class TAV_EXPORT GenericReadOnlySequence : public Generic::SequenceIntf {
public:
    explicit GenericReadOnlySequence(Generic::SequencePtr aShown);
    ~GenericReadOnlySequence() override;

    TAV_SEQUENCE_STORAGE_OPERATIONS
    bool generic_empty(Deviant const& aDeviant) const override;
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override;

private:
    Generic::SequencePtr fShown;
};

} // namespace TAV
