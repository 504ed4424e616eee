"""The eight functions of a metaclass's IntrospectiveMethods: one switch on the property id each.

A case calls the typed accessor the property's plan emits, so a property with no accessor of a
function's kind falls to that function's default: multi-valued ids in the single-valued
functions and the reverse, derived properties with no setter in the writing ones.
"""

from __future__ import annotations

from dataclasses import dataclass
from typing import Dict, List, Optional, Set, Tuple

from .common import Common, handle_header
from .model import Prop, Type
from .plan import Op, intf, plural, value_cpp, value_header

SINGLE = ("getSingleValued", "hasSingleValued", "setSingleValued", "setOnlySingleValued",
          "removeSingleValued", "removeOnlySingleValued")
MULTI = ("getMultiValued", "getOnlyMultiValued")

SIGNATURES = {
    "getSingleValued": ("Object", "NSInterface::ClassObjectIntf const* aObject, Deviant aDeviant, unsigned aId"),
    "hasSingleValued": ("bool", "NSInterface::ClassObjectIntf const* aObject, Deviant aDeviant, unsigned aId"),
    "setSingleValued": ("void", "NSInterface::ClassObjectIntf* aObject, Deviant aDeviant, unsigned aId, "
                                "Object const& aValue"),
    "setOnlySingleValued": ("void", "NSInterface::ClassObjectIntf* aObject, Deviant aDeviant, unsigned aId, "
                                    "Object const& aValue"),
    "removeSingleValued": ("void", "NSInterface::ClassObjectIntf* aObject, Deviant aDeviant, unsigned aId"),
    "removeOnlySingleValued": ("void", "NSInterface::ClassObjectIntf* aObject, Deviant aDeviant, unsigned aId"),
    "getMultiValued": ("IntrospectiveMethods::SequencePtr",
                       "NSInterface::ClassObjectIntf* aObject, Deviant aDeviant, unsigned aId, bool"),
    "getOnlyMultiValued": ("IntrospectiveMethods::SequencePtr",
                           "NSInterface::ClassObjectIntf* aObject, Deviant aDeviant, unsigned aId, bool"),
}


@dataclass
class Accessors:
    """The typed accessors that serve one property id, by the function that calls them."""
    prop: Prop
    ops: Dict[str, Op]          # operation name -> operation, from the plan that serves the id
    name: str                   # the upper-cased name the accessors carry
    read_only: bool             # derived with no setter of its own: the writing functions refuse

    def op(self, *names: str) -> Optional[Op]:
        return next((self.ops[n] for n in names if n in self.ops), None)


class ReflectionEmitter(Common):
    def plan_of(self, p: Prop):
        return next(pl for pl in self.P.props[p.owner.name] if pl.prop is p)

    def accessors(self, p: Prop) -> Accessors:
        """A property without accessors of its own that redefines a same-named one is served by
        the redefined property's, reached virtually, so an override on the class answers."""
        own = {op.name: op for op in self.plan_of(p).ops}
        q = p
        while not own and q.redefines_same_name:
            q = next(r.target for r in q.redefines if r.prop == q.name)
            own = {op.name: op for op in self.plan_of(q).ops}
        served_by_other = q is not p
        return Accessors(p, own, p.upper_name, read_only=p.derived and served_by_other)

    # -- one case per function ---------------------------------------------------------------
    def case(self, fn: str, a: Accessors) -> Optional[str]:
        p, U = a.prop, a.name
        if p.multi:
            Ps = plural(U)
            name = {"getMultiValued": f"get{Ps}", "getOnlyMultiValued": f"get{Ps}WithoutAssociation"}.get(fn)
            if name is None or name not in a.ops:
                return None
            return f"return ::TAV::reflection::sequenceOf(o->{name}(aDeviant));"
        getter = a.op(f"get{U}", p.name)
        if fn in MULTI or getter is None or getter.params[1:]:
            return None
        if fn == "getSingleValued":
            if getattr(getter.ret, "handle", None) is not None:
                return f"return ::TAV::reflection::objectOf(o->{getter.name}(aDeviant), aDeviant);"
            return f"return static_cast<Object>(o->{getter.name}(aDeviant));"
        if fn == "hasSingleValued":
            if p.lower == 1:
                return "return true;"
            has = a.op(f"has{U}")
            return f"return o->{has.name}(aDeviant);" if has else None
        if a.read_only:
            return None
        # A value has no other end: its "only" forms are its plain ones.
        setter = {"setSingleValued": a.op(f"set{U}"), "setOnlySingleValued": a.op(f"setOnly{U}", f"set{U}"),
                  "removeSingleValued": a.op(f"remove{U}"),
                  "removeOnlySingleValued": a.op(f"removeOnly{U}", f"remove{U}")}[fn]
        if setter is None:
            return None
        if fn.startswith("remove"):
            return f"o->{setter.name}(aDeviant);\nreturn;"
        t = setter.params[1][0]
        if getattr(t, "handle", None) is not None:
            value = f"Immutable{t.handle.name}(aValue)"
        else:
            value = f"::TAV::TAVCast<{value_cpp(t.value)}>(aValue)"
        return f"o->{setter.name}(aDeviant, {value});\nreturn;"

    def types_used(self, cls: Type) -> Tuple[Dict[str, Type], Set[str]]:
        """Handle classes and value headers the cases name."""
        handles, values = {}, set()
        for p in cls.props:
            a = self.accessors(p)
            for op in a.ops.values():
                for t in [op.ret] + [t for t, _ in op.params]:
                    if getattr(t, "handle", None) is not None:
                        handles[t.handle.name] = t.handle
                    if getattr(t, "value", None) is not None and value_header(t.value):
                        values.add(value_header(t.value))
        return handles, values

    def reflection_includes(self, cls: Type) -> List[str]:
        handles, values = self.types_used(cls)
        out = [f"#include <{self.R(t)}/{handle_header(t)}>" for t in (handles[n] for n in sorted(handles))]
        out += [f"#include <{h}>" for h in sorted(values)]
        out += ["#include <tav/kernel/util/TAVCast.h>",
                "#include <tav/kernel/util/propertystorage/IntrospectiveSupport.h>"]
        return out

    def emit_reflection(self, p, cls: Type) -> None:
        """The IntrospectiveMethodsImpl of cls, inside its own namespace: the family builds in unity
        batches, so nothing here may be file-local."""
        X = intf(cls)
        source = f"{self.kern}/NSMetaRegistry/{cls.name}MetaRegistry"
        p(f"namespace {cls.name}MetaRegistry {{\n")
        p.each([f'constexpr char kName[] = "{self.mm.package}.{cls.name}";',
                f'constexpr char kSource[] = "{source}";', ""])
        with p.scope("struct IntrospectiveMethodsImpl {", "};\n"):
            p.each([f"static {SIGNATURES[fn][0]} {fn}({SIGNATURES[fn][1]});" for fn in SINGLE + MULTI])
        for fn in SINGLE + MULTI:
            ret, params = SIGNATURES[fn]
            live = [(q.id, body) for q in cls.props if (body := self.case(fn, self.accessors(q)))]
            const = " const" if fn in ("getSingleValued", "hasSingleValued") else ""
            with p.scope(f"{ret} IntrospectiveMethodsImpl::{fn}({params})\n{{", "}\n"):
                p.each([f"auto* o = ::TAV::reflection::castTo<NSInterface::{X}{const}>(aObject, kSource, __LINE__);"])
                if fn in ("setSingleValued", "setOnlySingleValued"):
                    p.each(["::TAV::Cager cager;"])
                # Some classes leave a function with no case, or with constant ones.
                p.each(["(void)o;", "(void)aDeviant;"] + (["(void)aValue;"] if "aValue" in params else []))
                illegal = f'::TAV::reflection::illegalProperty(kName, "{fn}", kSource, __LINE__);'
                with p.scope("switch (aId) {", "}"):
                    for i, body in live:
                        p.each([f"case {i}: {{"] + ["    " + l for l in body.split("\n")] + ["}"])
                    if fn in MULTI:
                        p.each(["default:", "    " + illegal])
                        continue
                    p.each(["case 0:", "    " + illegal, "default:"])
                    if fn == "hasSingleValued":
                        p.each(["    return false;"])
                    else:
                        p.each([f'    ::TAV::reflection::illegalPropertyId(kName, "{fn}", aId, kSource, __LINE__);'])
        p(f"}} // namespace {cls.name}MetaRegistry\n")

    @staticmethod
    def reflection_table(cls: Type) -> str:
        impl = f"NSImplementation::{cls.name}MetaRegistry::IntrospectiveMethodsImpl::"
        return ",\n".join(impl + fn for fn in SINGLE + MULTI) + ","
