#pragma once

#include <tav/Export.h>

namespace TAV {

class ClassObject;

// Destroys an object and everything it contains in the handle's deviant: every link
// from the subtree to the outside is cut first, then each object becomes invalid there.
// Undo brings the whole subtree back. An empty or invalid handle is left alone.
class TAV_EXPORT DestroyVisitor {
public:
    static void destroy(ClassObject const& aObject);
};

} // namespace TAV
