#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>
#include <tav/TAV/Object_h.h>
#include <tav/TAV/String.h>

namespace TAV {

class ImmutableDataType;
class ValueObject;

// Where an element came from in another tool: the tool, and the element's id
// there. A field is set when its text is not empty; the Object forms are as
// on Argument.
class TAV_EXPORT ExternalToolInfo {
public:
    ExternalToolInfo() = default;
    ExternalToolInfo(String aTool, String aExternalId) : fTool(std::move(aTool)), fExternalId(std::move(aExternalId))
    {
    }

    bool hasTool() const { return !fTool.empty(); }
    String const& getTool() const { return fTool; }
    void setTool(String const& aTool) { fTool = aTool; }
    void removeTool() { fTool.clear(); }
    ImmutableObject getToolAsImmutableObject() const;
    bool hasObjectTool() const { return hasTool(); }
    void setOrAddObjectTool(Object const& aValue);
    void removeObjectTool(Object const&) { removeTool(); }
    void removeObjectFirstTool() { removeTool(); }

    bool hasExternalId() const { return !fExternalId.empty(); }
    String const& getExternalId() const { return fExternalId; }
    void setExternalId(String const& aExternalId) { fExternalId = aExternalId; }
    void removeExternalId() { fExternalId.clear(); }
    ImmutableObject getExternalIdAsImmutableObject() const;
    bool hasObjectExternalId() const { return hasExternalId(); }
    void setOrAddObjectExternalId(Object const& aValue);
    void removeObjectExternalId(Object const&) { removeExternalId(); }
    void removeObjectFirstExternalId() { removeExternalId(); }

    static std::string const& getTypeName();
    static BRIX::TypeInfo const& getTypeInfo();
    // The metamodel DataType of the class: null until the metamodel stands.
    static ImmutableDataType MetaDataType();
    ImmutableDataType getMetaDataType() const;
    String toString() const;
    static ExternalToolInfo fromString(String const& aText);
    explicit ExternalToolInfo(ImmutableObject const& aObject);
    operator ValueObject() const;
    operator Object() const;

    friend bool operator==(ExternalToolInfo const& a, ExternalToolInfo const& b)
    {
        return a.fTool == b.fTool && a.fExternalId == b.fExternalId;
    }
    friend bool operator!=(ExternalToolInfo const& a, ExternalToolInfo const& b) { return !(a == b); }
    friend bool operator<(ExternalToolInfo const& a, ExternalToolInfo const& b)
    {
        return a.fTool < b.fTool || (a.fTool == b.fTool && a.fExternalId < b.fExternalId);
    }

private:
    String fTool;
    String fExternalId;
};

} // namespace TAV
