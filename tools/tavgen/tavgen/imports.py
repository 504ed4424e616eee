"""The prelude of a description that imports others: their names, usable unqualified in its namespace."""

from __future__ import annotations

from .common import Common
from .plan import intf

# What generated code names unqualified from the runtime's namespace.
RUNTIME_NAMES = ["Deviant", "ListOfReferences", "String", "Integer", "Boolean", "UnlimitedNatural", "Object", "ImmutableObject",
                 "HandleBase", "SparseMap", "Sequence", "ImmutableSequence", "MultiIndexImpl", "ReferenceCountingIntf", "StateFactory", "Deviations",
                 "IntrospectiveMethods", "PackageIntrospectiveMethods", "MetaPropertyDescription",
                 "MetaPropertyRef", "MetaClassRef", "ImmutableSequence", "Sequence"]
RUNTIME_NAMESPACES = ["family", "CooperativeVisitor"]
RUNTIME_HEADERS = ["tav/TAV/Boolean.h", "tav/TAV/Integer.h", "tav/TAV/String.h", "tav/TAV/UnlimitedNatural.h",
                   "tav/TAV/detail/Object_hdecl.h", "tav/kernel/family/Support.h",
                   "tav/kernel/util/IntrospectiveMethods.h", "tav/TAV/NSInterface/ObjectIntf.h",
                   "tav/kernel/containers/sequence/SequenceFwd.h"]


class ImportEmitter(Common):
    def emit_prelude(self) -> None:
        if not self.mm.packages:
            return
        s = [self.banner, "#pragma once\n"] + [f"#include <{h}>" for h in RUNTIME_HEADERS] + [""]
        for pkg in self.mm.packages:
            own = [t for t in self.mm.imported if t.home is pkg and t.is_class]
            s.append(f"namespace {pkg.namespace} {{")
            s += [f"class Immutable{t.name};\nclass {t.name};" for t in own]
            s.append("namespace NSInterface {")
            s += [f"class {intf(t)};" for t in own if not t.handwritten]
            s.append("}")
            s.append(f"PackageIntrospectiveMethods* get_{pkg.package}_PackageIntrospectiveMethods();")
            s.append(f"}} // namespace {pkg.namespace}\n")
        s.append(f"// Names of the runtime and of the imported descriptions, as if declared here.\nnamespace {self.ns} {{")
        s += [f"using ::TAV::{n};" for n in RUNTIME_NAMES]
        s += [f"namespace {n} = ::TAV::{n};" for n in RUNTIME_NAMESPACES]
        for pkg in self.mm.packages:
            own = [t for t in self.mm.imported if t.home is pkg and t.is_class]
            s += [f"using ::{pkg.namespace}::Immutable{t.name};\nusing ::{pkg.namespace}::{t.name};"
                  for t in own if t.name != "Object"]
            s.append(f"using ::{pkg.namespace}::get_{pkg.package}_PackageIntrospectiveMethods;")
        s.append("namespace NSInterface {\nusing ::TAV::NSInterface::ObjectIntf;")
        for pkg in self.mm.packages:
            s += [f"using ::{pkg.namespace}::NSInterface::{intf(t)};"
                  for t in self.mm.imported if t.home is pkg and t.is_class and not t.handwritten]
        s.append("} // namespace NSInterface")
        s.append(f"}} // namespace {self.ns}\n")
        self.files[f"export/include/{self.prelude_path()}"] = "\n".join(s)
