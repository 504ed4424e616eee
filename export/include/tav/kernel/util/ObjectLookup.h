#pragma once

#include <tav/Export.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/String.h>

namespace TAV {

class ClassObject;
class ImmutableClassObject;
class Model;

// An object's index as text, "_tav_" and the number; an index of 0 is no id, the empty text.
TAV_EXPORT String SerializeId(ImmutableClassObject const& aObject);
// The number of such a text; 0 for any other text.
TAV_EXPORT Integer DeSerializeId(String const& aId);

// The object of the model with that id, on the model's deviant; empty if there is none.
TAV_EXPORT ClassObject getObjectById(String const& aId, Model const& aModel);
// A model's URI, or the URI of one of its objects ("<model uri>#_tav_<n>"), read on the
// model's root deviant. Unknown models and ids give an empty handle; a text that is no
// URI raises "Invalid uri : <text>".
TAV_EXPORT ClassObject getObjectByUri(String const& aUri);

} // namespace TAV
