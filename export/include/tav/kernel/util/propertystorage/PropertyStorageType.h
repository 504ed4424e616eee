#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>

namespace TAV {

// Lets a PropertyStorage travel in a BRIX::any. A storage has no text: it writes
// as the empty text and reads back as a null handle.
class TAV_EXPORT PropertyStorageType : public BRIX::Type {
public:
    static constexpr char kName[] = "PropertyStorage";
    static constexpr char kQualifiedName[] = "TAV.PropertyStorage";
    static constexpr char kSequenceName[] = "TAV.SequenceOfPropertyStorage";
    static constexpr char kImmutableSequenceName[] = "TAV.ImmutableSequenceOfPropertyStorage";
    static constexpr char kIteratorName[] = "TAV.PropertyStorageIterator";
    static constexpr char kImmutableIteratorName[] = "TAV.PropertyStorageImmutableIterator";

    // A description, registered under its name the first time one is made.
    static BRIX::TypeInfo Create();

    BRIX::any convertFromString(std::string const& aText, BRIX::ErrorHolder& aErrors) const override;
    std::string convertToString(BRIX::any const& aValue) const override;
    BRIX::any defaultConstruct() const override;
    std::unique_ptr<BRIX::Type> clone() const override;
};

} // namespace TAV
