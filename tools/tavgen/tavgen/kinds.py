"""One emitter per kind of property, chosen by one factory.

Each kind answers what a property of that kind emits: the operations of its accessor group
with their bodies (interface logic, direct object read, state body) and its state field.
Bodies are C++ statement templates. `{bit}` stands for the property's setFlags bit in the
concrete state class, `{S}` for the state class; `s` names the state inside object overrides.
"""

from __future__ import annotations

from typing import List, Optional, Tuple

from .model import Metamodel, Prop
from .plan import Field, Op, PropPlan, himm, intf, literal, pending, plural, stored_by_redefinition, value_cpp

D = ("Deviant", "aDeviant")


def pending_ops(p: Prop) -> List[Op]:
    """The accessor group of a property that is declared now and served later."""
    U = p.upper_name
    D = ("Deviant", "aDeviant")
    if p.multi:
        Ps = plural(U)
        # Sparse lists answer has like the other sparse properties; the getters' sequences
        # come later, so their slots are held under placeholder names.
        ops = [Op(f"has{Ps}", "bool", [D], True)] if p.sparse else []
        ops += [Op(f"internal_pendingGet{Ps}", "void", [D], False, on_handle=False),
                Op(f"internal_pendingGet{Ps}WithoutAssociation", "void", [D], True, on_handle=False)]
    else:
        cpp = value_cpp(p.type) if p.is_value else himm(p.type)
        ops = [Op(f"has{U}", "bool", [D], True), Op(f"remove{U}", "void", [D], False, mutating=True),
               Op(f"set{U}", "void", [D, (cpp.ref(), "aValue")], False, mutating=True),
               Op(f"get{U}", cpp, [D], True)]
    for op in ops:
        op.logic = pending(op.name, op.params, p.owner)
    return ops


def hand_ops(p: Prop) -> List[Op]:
    """A derived single reference whose accessors the hand-maintained part writes."""
    U = p.upper_name
    D = ("Deviant", "aDeviant")
    H = himm(p.type)
    return [Op(f"has{U}", "bool", [D], True), Op(f"remove{U}", "void", [D], False, mutating=True),
            Op(f"get{U}", H, [D], True), Op(f"removeOnly{U}", "void", [D], False, mutating=True)]


def upkeep_snippets(upkeep: Optional[Prop], self_expr: str) -> Tuple[str, str]:
    """Statements that add this object to, and drop it from, the raw list of a
    multi-valued opposite end: `aValue` is the new value, `current` the old."""
    if upkeep is None:
        return "", ""
    OU = plural(upkeep.upper_name)
    push = (f"if (aValue.internal_intf())\n"
            f"    if (auto* list = aValue.internal_intf()->internal_raw{OU}ForWrite(aDeviant))\n"
            f"        list->push_back({self_expr});\n")
    drop = (f"if (auto* list = current.internal_intf()->internal_raw{OU}ForWrite(aDeviant))\n"
            f"    list->remove({self_expr});\n")
    return push, drop


def containees_of(mm: Metamodel) -> Optional[Prop]:
    return next((q for c in mm.all_classes for q in c.props if "containees" in q.flags), None)


def redefined_override_ops(mm: Metamodel, p: Prop) -> List[Op]:
    """A derived redefinition answered by hand: the redefined group's operations, overridden."""
    target = next(r.target for r in p.redefines if r.prop == p.name)
    out = []
    for op in plan_prop(mm, target).ops:
        out.append(Op(op.name, op.ret, list(op.params), op.const, mutating=op.mutating,
                      on_handle=False, override=True))
    return out



def sequence_ops(p: Prop) -> List[Op]:
    """Where getPs and getPsWithoutAssociation go, in the property's place of the interface.

    They wrap the raw list (`internal_rawPs`) into typed sequences and come with the sequence
    containers; until then nothing is emitted rather than something that only looks like them.
    """
    return []


def value_getter(p: Prop) -> str:
    """Boolean `isX` properties read as `isX()`, every other value as `getX()`."""
    if p.type.name == "Boolean" and p.name.startswith("is") and p.name[2:3].isupper():
        return p.name
    return f"get{p.upper_name}"


def cross_model_check(mm: Metamodel, p: Prop) -> str:
    """Both ends of an association must live in one model."""
    if not p.opposite:
        return ""
    return (f"if (aValue.internal_intf())\n"
            f"    family::crossModelCheck(aDeviant, aValue.getDeviant(), &sIntrospectiveMethods, {p.id},\n"
            f"                            \"kernel/{mm.package}/NSImplementation/{p.owner.name}Impl\", __LINE__);\n")


def empty_is_remove(U: str) -> str:
    """Setting an end to nothing removes it, the opposite end's list included."""
    return f"if (!aValue.internal_intf()) {{\n    remove{U}(aDeviant);\n    return;\n}}\n"


def upkeep_end(p: Prop) -> Optional[Prop]:
    """The opposite end whose raw list this end keeps, if it stores one."""
    opp = p.opposite.target if p.opposite else None
    return opp if (opp is not None and opp.stored_list) else None


class Kind:
    """A kind of property and what it emits."""
    name = ""

    def matches(self, p: Prop) -> bool:
        raise NotImplementedError

    def plan(self, mm: Metamodel, p: Prop) -> PropPlan:
        raise NotImplementedError


class Deferred(Kind):
    """Declared in the description, emitted by nothing yet; says why."""

    def __init__(self, name: str, test, why):
        self.name, self.test, self.why = name, test, why

    def matches(self, p: Prop) -> bool:
        return self.test(p)

    def plan(self, mm: Metamodel, p: Prop) -> PropPlan:
        return PropPlan(p, self.name, deferred=self.why(p) if callable(self.why) else self.why)


class Redefined(Deferred):
    """A redefinition that adds nothing to the redefined property: it emits no accessors, and
    reflection reaches it through the redefined property's."""

    def __init__(self, test):
        super().__init__("redefinition", test, None)

    def plan(self, mm, p):
        return PropPlan(p, self.name)


class Pending(Kind):
    """Its accessors are declared now and raise until their milestone lands."""
    name = "pending"

    def matches(self, p):
        return "pending" in p.flags

    def plan(self, mm, p):
        return PropPlan(p, self.name, ops=pending_ops(p))


class HandRedefinition(Kind):
    """A derived redefinition answered by hand over the redefined group."""
    name = "hand_redefinition"

    def matches(self, p):
        return "hand" in p.flags and p.redefines_same_name

    def plan(self, mm, p):
        return PropPlan(p, self.name, ops=redefined_override_ops(mm, p))


class Hand(Kind):
    """A derived single reference whose accessors the hand-maintained part writes."""
    name = "hand"

    def matches(self, p):
        return "hand" in p.flags

    def plan(self, mm, p):
        return PropPlan(p, self.name, ops=hand_ops(p))


class SparseList(Kind):
    """A rarely set multi-valued reference, kept in a process-wide map keyed by the state."""
    name = "sparse_list"

    def matches(self, p):
        return p.multi and p.sparse and p.is_reference

    def plan(self, mm, p):
        U = p.upper_name
        pl = PropPlan(p, "sparse_list", sparse_map=("RawRefList", f"{p.name}_sparse"))
        key_r = "getReadDeviantI(aDeviant, static_cast<ClassObjectIntf const*>(this))"
        key_w = "getWriteDeviantI(aDeviant, static_cast<ClassObjectIntf const*>(this))"
        Ps = plural(U)
        pl.ops.append(Op(f"has{Ps}", "bool", [D], True, logic=(
            f"auto const* list = internal_raw{Ps}(aDeviant);\n"
            f"return list && !list->empty();")))
        pl.ops.append(Op(f"internal_raw{Ps}", "RawRefList const*", [D], True, on_handle=False, logic=(
            f"auto const* s = {key_r};\n"
            f"if (!s)\n    return nullptr;\n"
            f"auto const& map = {p.name}_sparse();\n"
            f"auto it = map.find(s);\n"
            f"return it != map.end() ? &it->second : nullptr;")))
        pl.ops.append(Op(f"internal_raw{Ps}ForWrite", "RawRefList*", [D], False, on_handle=False, logic=(
            f"auto const* s = {key_w};\n"
            f"return s ? &{p.name}_sparse()[s] : nullptr;")))
        return pl


class List(Kind):
    """A multi-valued reference stored as a raw list in the state."""
    name = "list"

    def matches(self, p):
        return p.multi

    def plan(self, mm, p):
        U = p.upper_name
        pl = PropPlan(p, "list")
        pl.ops.extend(sequence_ops(p))
        fname = f"f{U}"
        pl.field = Field("RawRefList", fname, "")
        pl.ops.append(Op(f"internal_raw{plural(U)}", "RawRefList const*", [D], True, logic=(
            f"auto const* s = getReadDeviantI(aDeviant, this);\n"
            f"return s ? s->internal_raw{plural(U)}(aDeviant) : nullptr;"),
            state=f"return &{fname};", on_handle=False))
        pl.ops.append(Op(f"internal_raw{plural(U)}ForWrite", f"RawRefList*", [D], False, logic=(
            f"auto* s = getWriteDeviantI(aDeviant, this);\n"
            f"return s ? s->internal_raw{plural(U)}ForWrite(aDeviant) : nullptr;"),
            state=f"return &{fname};", on_handle=False))
        return pl



class SparseValue(Kind):
    """A rarely set single value, kept in a process-wide map keyed by the state."""
    name = "sparse_value"

    def matches(self, p):
        return not p.multi and p.is_value and p.sparse

    def plan(self, mm, p):
        U = p.upper_name
        cpp = value_cpp(p.type)
        getter = value_getter(p)
        pl = PropPlan(p, "sparse_value", sparse_map=(cpp, f"{p.name}_sparse"))
        key_r = "getReadDeviantI(aDeviant, static_cast<ClassObjectIntf const*>(this))"
        key_w = "getWriteDeviantI(aDeviant, static_cast<ClassObjectIntf const*>(this))"
        dflt = literal(p)
        pl.ops += [
            Op(f"has{U}", "bool", [D], True, logic=(
                f"auto const* s = {key_r};\nreturn s && {p.name}_sparse().count(s) != 0;")),
            Op(f"remove{U}", "void", [D], False, mutating=True, logic=(
                f"if (!has{U}(aDeviant))\n    return;\n"
                f"{p.name}_sparse().erase({key_w});")),
            Op(f"set{U}", "void", [D, (cpp.ref(), "aValue")], False, mutating=True, logic=(
                f"if (has{U}(aDeviant) && {getter}(aDeviant) == aValue)\n    return;\n"
                f"{p.name}_sparse()[{key_w}] = aValue;")),
            Op(getter, cpp, [D], True, logic=(
                f"auto const* s = {key_r};\n"
                f"auto const& map = {p.name}_sparse();\n"
                f"auto it = s ? map.find(s) : map.end();\n"
                f"return it != map.end() ? it->second : {cpp}({dflt});")),
        ]
        return pl


class Value(Kind):
    """A single value stored in the state; optional ones own a setFlags bit."""
    name = "value"

    def matches(self, p):
        return not p.multi and p.is_value

    def plan(self, mm, p):
        U = p.upper_name
        cpp = value_cpp(p.type)
        getter = value_getter(p)
        pl = PropPlan(p, "value")
        fname = f"f{U}"
        optional = p.lower == 0
        pl.field = Field(cpp, fname, literal(p), bit=optional)
        if optional:
            pl.ops.append(Op(f"has{U}", "bool", [D], True, pure=True,
                             impl="return (s->fSetFlags & (1u << {bit})) != 0;",
                             state="return (fSetFlags & (1u << {bit})) != 0;"))
            pl.ops.append(Op(f"remove{U}", "void", [D], False, mutating=True, logic=(
                f"if (!has{U}(aDeviant))\n    return;\n"
                f"getWriteDeviantI(aDeviant, this)->remove{U}(aDeviant);"),
                state=(f"{fname} = {cpp}({literal(p)});\n"
                       "fSetFlags = static_cast<decltype(fSetFlags)>(fSetFlags & ~(1u << {bit}));")))
            unchanged = f"if (has{U}(aDeviant) && {getter}(aDeviant) == aValue)\n    return;\n"
            store = f"{fname} = aValue;\nfSetFlags = static_cast<decltype(fSetFlags)>(fSetFlags | (1u << {{bit}}));"
        else:
            # A mandatory value always has one.
            pl.ops.append(Op(f"has{U}", "bool", [D], True, logic="(void)aDeviant;\nreturn true;"))
            pl.ops.append(Op(f"remove{U}", "void", [D], False, mutating=True,
                             logic="(void)aDeviant;"))
            unchanged = f"if ({getter}(aDeviant) == aValue)\n    return;\n"
            store = f"{fname} = aValue;"
        pl.ops.append(Op(f"set{U}", "void", [D, (cpp.ref(), "aValue")], False, mutating=True,
                         logic=unchanged + f"getWriteDeviantI(aDeviant, this)->set{U}(aDeviant, aValue);",
                         state=store))
        pl.ops.append(Op(getter, cpp, [D], True, pure=True, impl=f"return s->{fname};",
                         state=f"return {fname};"))
        return pl



class Reference(Kind):
    """A single reference stored in the state, the container slot included."""
    name = "ref"

    def matches(self, p):
        return (not p.multi and p.is_reference and
                (p.is_container_slot or (not p.is_container_end and not p.derived and not stored_by_redefinition(p))))

    def plan(self, mm, p):
        U = p.upper_name
        pid = p.id
        H = himm(p.type)
        T = p.type
        upkeep = upkeep_end(p)
        cross = cross_model_check(mm, p)
        self_expr = "family::selfCanonical(this)"
        pl = PropPlan(p, "ref", upkeep=upkeep)
        fname = "fContainer" if p.is_container_slot else f"f{p.upper_name}"
        pl.field = Field(f"{intf(T)}*", fname, "nullptr")
        # Unlike a value, an absent reference shows in its storage, so has/remove are real
        # whatever the lower bound. A reference into another model is counted for it.
        refer = (f"aDeviant.setOrAddReferred(aValue.getDeviant(), &sIntrospectiveMethods, {pid});\n")
        unrefer = (f"aDeviant.removeReferred(current.getDeviant(), &sIntrospectiveMethods, {pid});\n")
        ops = [Op(f"has{U}", "bool", [D], True, pure=True, impl=f"return s->{fname} != nullptr;",
                  state=f"return {fname} != nullptr;")]
        push, drop = upkeep_snippets(upkeep, self_expr)
        # The container slot leaves its old list last, other ends first.
        first, last = ("", drop) if p.is_container_slot else (drop, "")
        ops.append(Op(f"remove{U}", "void", [D], False, mutating=True, logic=(
            f"{H} current = get{U}(aDeviant);\n"
            f"if (!current.internal_intf())\n    return;\n" + first +
            f"removeOnly{U}(aDeviant);\n" + last)))
        ops.append(Op(f"set{U}", "void", [D, (H.ref(), "aValue")], False, mutating=True, logic=(
            cross + empty_is_remove(U) +
            f"if (has{U}(aDeviant) && get{U}(aDeviant) == aValue)\n    return;\n"
            f"setOnly{U}(aDeviant, aValue);\n" + push)))
        ops.append(Op(f"get{U}", H, [D], True, pure=True, impl=f"return {H}(s->{fname}, aDeviant);",
                      state=f"return {H}({fname}, aDeviant);"))
        ops.append(Op(f"removeOnly{U}", "void", [D], False, mutating=True, logic=(
            f"{H} current = get{U}(aDeviant);\n"
            f"if (!current.internal_intf())\n    return;\n" + unrefer +
            f"getWriteDeviantI(aDeviant, this)->removeOnly{U}(aDeviant);"),
            state=f"{fname} = nullptr;"))
        ops.append(Op(f"setOnly{U}", "void", [D, (H.ref(), "aValue")], False, mutating=True, logic=(
            cross +
            f"if (!aValue.internal_intf()) {{\n"
            f"    removeOnly{U}(aDeviant);\n    return;\n}}\n"
            f"{H} current = get{U}(aDeviant);\n"
            f"if (current.internal_intf()) {{\n"
            f"    if (current == aValue)\n        return;\n" +
            "".join("    " + l + "\n" for l in (drop + unrefer).splitlines()) +
            f"}}\n" + refer +
            f"getWriteDeviantI(aDeviant, this)->setOnly{U}(aDeviant, aValue);"),
            state=f"{fname} = family::firstPath(aValue.internal_intf());"))
        pl.ops = ops
        return pl



class ContainerEnd(Kind):
    """A single-valued end stored through the object's container slot."""
    name = "container_end"

    def matches(self, p):
        return not p.multi and p.is_reference and p.is_container_end

    def plan(self, mm, p):
        U = p.upper_name
        H = himm(p.type)
        upkeep = upkeep_end(p)
        cross = cross_model_check(mm, p)
        self_expr = "family::selfCanonical(this)"
        pl = PropPlan(p, "container_end", upkeep=upkeep)
        slot = next(q for q in p.subset_closure() if q.is_container_slot).upper_name
        get = Op(f"get{U}", H, [D], True, logic=f"return {H}(get{slot}(aDeviant));")
        if (p.derived or p.readonly) and "writable" not in p.flags:
            pl.ops = [Op(f"has{U}", "bool", [D], True,
                         logic=f"return get{U}(aDeviant).internal_intf() != nullptr;"), get]
            return pl
        optional = p.lower == 0
        push, drop = upkeep_snippets(upkeep, self_expr)
        # Every containment end is also a subset of the containee list.
        push += upkeep_snippets(containees_of(mm), self_expr)[0]
        ops = []
        if optional:
            ops.append(Op(f"has{U}", "bool", [D], True,
                          logic=f"return get{U}(aDeviant).internal_intf() != nullptr;"))
            # The container goes whichever end holds it; only this end's list needs upkeep.
            ops.append(Op(f"remove{U}", "void", [D], False, mutating=True, logic=(
                (f"{H} current = get{U}(aDeviant);\n"
                 f"if (current.internal_intf()) {{\n" +
                 "".join("    " + l + "\n" for l in drop.splitlines()) + "}\n" if drop else "") +
                f"remove{slot}(aDeviant);")))
        else:
            ops.append(Op(f"has{U}", "bool", [D], True, logic="(void)aDeviant;\nreturn true;"))
            ops.append(Op(f"remove{U}", "void", [D], False, mutating=True, logic="(void)aDeviant;"))
        ops.append(Op(f"set{U}", "void", [D, (H.ref(), "aValue")], False, mutating=True, logic=(
            cross + empty_is_remove(U) +
            f"if (has{slot}(aDeviant) && get{U}(aDeviant) == aValue)\n    return;\n"
            f"setOnly{U}(aDeviant, aValue);\n" + push)))
        ops.append(get)
        if optional:
            ops.append(Op(f"removeOnly{U}", "void", [D], False, mutating=True, logic=(
                f"if (!has{U}(aDeviant))\n    return;\n"
                f"removeOnly{slot}(aDeviant);")))
        else:
            ops.append(Op(f"removeOnly{U}", "void", [D], False, mutating=True, logic="(void)aDeviant;"))
        ops.append(Op(f"setOnly{U}", "void", [D, (H.ref(), "aValue")], False, mutating=True, logic=(
            cross +
            f"if (!aValue.internal_intf()) {{\n"
            f"    removeOnly{slot}(aDeviant);\n    return;\n}}\n"
            f"{H} current = get{U}(aDeviant);\n"
            f"if (current.internal_intf()) {{\n"
            f"    if (current == aValue)\n        return;\n" +
            "".join("    " + l + "\n" for l in drop.splitlines()) +
            f"}}\n"
            f"setOnly{slot}(aDeviant, ImmutableClassObject(aValue));")))
        pl.ops = ops
        return pl


# First match wins: the order is the precedence of the markers.
KINDS: List[Kind] = [
    Pending(), HandRedefinition(), Hand(), SparseList(),
    Deferred("derived_list", lambda p: p.multi and p.derived and "containees" not in p.flags,
             "derived multi-valued: a view sequence"),
    Redefined(lambda p: p.multi and stored_by_redefinition(p)),
    Deferred("value_list", lambda p: p.multi and not p.is_reference, "multi-valued primitive: sequences milestone"),
    List(),
    Deferred("deferred", lambda p: "deferred" in p.flags, "marked deferred in the description"),
    Deferred("unbound", lambda p: p.is_value and value_cpp(p.type) is None,
             lambda p: f"no C++ value class for '{p.type.name}' yet"),
    SparseValue(),
    Deferred("derived", lambda p: p.is_value and p.derived, "derived: hand-maintained semantics"),
    Redefined(lambda p: stored_by_redefinition(p)
              and (p.is_value or not (p.is_container_end or p.is_container_slot))),
    Value(), Reference(), ContainerEnd(),
    Redefined(stored_by_redefinition),
    Deferred("derived", lambda p: True, "derived: hand-maintained semantics"),
]


def kind_of(p: Prop) -> Kind:
    return next(k for k in KINDS if k.matches(p))


def plan_prop(mm: Metamodel, p: Prop) -> PropPlan:
    return kind_of(p).plan(mm, p)
