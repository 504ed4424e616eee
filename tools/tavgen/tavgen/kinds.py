"""One emitter per kind of property, chosen by one factory.

Each kind answers what a property of that kind emits: the operations of its accessor group
with their bodies (interface logic, direct object read, state body) and its state field.
Bodies are C++ statement templates. `{bit}` stands for the property's setFlags bit in the
concrete state class, `{S}` for the state class; `s` names the state inside object overrides.
"""

from __future__ import annotations

from typing import List, Optional, Tuple

from .common import indent
from .model import Metamodel, Prop
from .plan import CppType, Field, Op, PropPlan, himm, hmut, intf, literal, pending, plural, stored_by_redefinition, value_cpp

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
    """A derived single property whose accessors the hand-maintained part writes."""
    U = p.upper_name
    D = ("Deviant", "aDeviant")
    if p.is_value:
        V = value_cpp(p.type)
        return [Op(f"has{U}", "bool", [D], True), Op(f"remove{U}", "void", [D], False, mutating=True),
                Op(f"set{U}", "void", [D, (V.ref(), "aValue")], False, mutating=True),
                Op(f"get{U}", V, [D], True)]
    H = himm(p.type)
    return [Op(f"has{U}", "bool", [D], True), Op(f"remove{U}", "void", [D], False, mutating=True),
            Op(f"get{U}", H, [D], True), Op(f"removeOnly{U}", "void", [D], False, mutating=True)]


def upkeep_snippets(upkeep: Optional[Prop], self_expr: str, value: str = "aValue",
                    current: str = "current") -> Tuple[str, str]:
    """Statements that add this object to, and drop it from, the storage of a multi-valued
    opposite end in the far object's write state: `value` is the new far object, `current`
    the old. They touch the storage directly, so the far end's own upkeep does not run."""
    if upkeep is None:
        return "", ""
    OI = intf(upkeep.owner)
    Ps = plural(upkeep.upper_name)

    def change(far: str, how: str) -> str:
        return (f"if (auto* far = family::writeStateAs<{OI}>({far}.internal_intf(), aDeviant))\n"
                f"    family::{how}(far->get{Ps}WithoutAssociation(aDeviant).internal_sequence(), {self_expr});\n")
    return change(value, "rawAdd"), change(current, "rawRemove")


def redefined_override_ops(mm: Metamodel, p: Prop) -> List[Op]:
    """A derived redefinition answered by hand: the redefined group's operations, overridden."""
    target = next(r.target for r in p.redefines if r.prop == p.name)
    out = []
    for op in plan_prop(mm, target).ops:
        out.append(Op(op.name, op.ret, list(op.params), op.const, mutating=op.mutating,
                      on_handle=False, override=True))
    return out



def element_cpp(p: Prop) -> CppType:
    """What a sequence of the property holds: the mutable handle, or the value class."""
    return value_cpp(p.type) if p.is_value else CppType(hmut(p.type), handle=p.type)


def sequence_ops(p: Prop, state: str) -> List[Op]:
    """getPs and getPsWithoutAssociation, in the property's place of the interface.

    On the object the second is the property seen through the deviant, which finds the
    storage in the read or write state at each use; the first wraps it to keep the opposite
    end where there is one. On the state both answer the storage itself (`state`)."""
    E = element_cpp(p)
    seq = CppType(f"Sequence<{E}>", E.handle, E.value)
    Ps = plural(p.upper_name)
    plain = Op(f"get{Ps}WithoutAssociation", seq, [D], True, state=state, sequence=E, logic=(
        f"return {seq}(family::deviantSequence(family::selfCanonical(this), aDeviant, &sIntrospectiveMethods, {p.id}),\n"
        f"    aDeviant);"))
    opp = p.opposite.target if p.opposite else None
    if opp is None and "contains" in p.flags:
        # A list without an end of its own whose elements take this object as their container.
        opp = next(q for c in p.owner.home.classes if c.frame for q in c.props if q.is_container_slot)
    if opp is None:
        logic = f"return get{Ps}WithoutAssociation(aDeviant);"
    else:
        logic = (f"return {seq}(family::associationSequence(family::selfCanonical(this), aDeviant,\n"
                 f"    get{Ps}WithoutAssociation(aDeviant).internal_pointer(), &{intf(opp.owner)}::sIntrospectiveMethods,\n"
                 f"    {opp.id}), aDeviant);")
    full = Op(f"get{Ps}", seq, [D], False, state=state, sequence=E, logic=logic)
    return [full, plain]


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
    """A derived single property whose accessors the hand-maintained part writes."""
    name = "hand"

    def matches(self, p):
        return "hand" in p.flags

    def plan(self, mm, p):
        return PropPlan(p, self.name, ops=hand_ops(p))


class SparseList(Kind):
    """A rarely set multi-valued property, kept in a process-wide map keyed by the state."""
    name = "sparse_list"

    def matches(self, p):
        return p.multi and p.sparse

    def plan(self, mm, p):
        box = f"family::SparseSequence<{element_cpp(p)}>"
        pl = PropPlan(p, "sparse_list", sparse_map=(box, f"{p.name}_sparse"))
        owner = f"NSInterface::{intf(p.owner)}"
        key_r = "getReadDeviantI(aDeviant, static_cast<ClassObjectIntf const*>(this))"
        pl.ops.append(Op(f"has{plural(p.upper_name)}", "bool", [D], True, logic=(
            f"auto const* s = {key_r};\n"
            f"return s && family::hasSparseSequence({p.name}_sparse(), s);")))
        E = element_cpp(p)
        state = (f"return Sequence<{E}>(family::sparseSequence({owner}::{p.name}_sparse(), "
                 f"as<NSInterface::ClassObjectIntf>()), aDeviant);")
        pl.ops += sequence_ops(p, state)
        return pl


class List(Kind):
    """A multi-valued property stored in the state as a unique multi-index."""
    name = "list"

    def matches(self, p):
        return p.multi

    def plan(self, mm, p):
        fname = f"f{p.upper_name}"
        pl = PropPlan(p, "list")
        pl.field = Field(f"MultiIndexImpl<{element_cpp(p)}, true>", fname, "")
        pl.ops += sequence_ops(p, f"return Sequence<{element_cpp(p)}>(family::storageOf({fname}), aDeviant);")
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
        # The container slot keeps the model's unparented list: an object leaves it for its
        # first container and comes back when it has none; the model's checks come first.
        slot = p.is_container_slot
        ops.append(Op(f"removeOnly{U}", "void", [D], False, mutating=True, logic=(
            f"{H} current = get{U}(aDeviant);\n"
            f"if (!current.internal_intf())\n    return;\n" +
            ("family::enterUnparented(this, aDeviant);\n" if slot else "") + unrefer +
            f"getWriteDeviantI(aDeviant, this)->removeOnly{U}(aDeviant);"),
            state=f"{fname} = nullptr;"))
        ops.append(Op(f"setOnly{U}", "void", [D, (H.ref(), "aValue")], False, mutating=True, logic=(
            cross +
            f"if (!aValue.internal_intf()) {{\n"
            f"    removeOnly{U}(aDeviant);\n    return;\n}}\n" +
            ("family::checkContainer(this, aDeviant, aValue);\n" if slot else "") +
            f"{H} current = get{U}(aDeviant);\n"
            f"if (current.internal_intf()) {{\n"
            f"    if (current == aValue)\n        return;\n" + indent(drop + unrefer) + "\n"
            f"}}" + (" else {\n    family::leaveUnparented(this, aDeviant);\n}\n" if slot else "\n") + refer +
            f"getWriteDeviantI(aDeviant, this)->setOnly{U}(aDeviant, aValue);"),
            state=f"{fname} = family::firstPath(aValue.internal_intf());"))
        pl.ops = ops
        return pl



class ContainerEnd(Kind):
    """A single-valued end stored through the object's container slot.

    Every containment end is a subset of the containee list, which is the container slot's
    opposite: `setOnlyP` enters this object in the new container's containees and `removeOnlyP`
    takes it out, while the end's own opposite list is left to `setP`/`removeP` or to the
    association sequence that called."""
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
        slot_prop = next(q for q in p.subset_closure() if q.is_container_slot)
        slot = slot_prop.upper_name
        get = Op(f"get{U}", H, [D], True, logic=f"return {H}(get{slot}(aDeviant));")
        if (p.derived or p.readonly) and "writable" not in p.flags:
            pl.ops = [Op(f"has{U}", "bool", [D], True,
                         logic=f"return get{U}(aDeviant).internal_intf() != nullptr;"), get]
            return pl
        optional = p.lower == 0
        push, drop = upkeep_snippets(upkeep, self_expr)
        enter, leave = upkeep_snippets(upkeep_end(slot_prop), self_expr, value="aValue", current="container")
        leave_container = (f"ImmutableClassObject container = get{slot}(aDeviant);\n" + leave) if leave else ""
        ops = []
        if optional:
            ops.append(Op(f"has{U}", "bool", [D], True,
                          logic=f"return get{U}(aDeviant).internal_intf() != nullptr;"))
            # The container goes whichever end holds it; only this end's list needs upkeep.
            ops.append(Op(f"remove{U}", "void", [D], False, mutating=True, logic=(
                (f"{H} current = get{U}(aDeviant);\n"
                 f"if (current.internal_intf()) {{\n" + indent(drop) + "\n}\n" if drop else "") +
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
                f"if (!has{U}(aDeviant))\n    return;\n" + leave_container +
                f"removeOnly{slot}(aDeviant);")))
        else:
            ops.append(Op(f"removeOnly{U}", "void", [D], False, mutating=True, logic="(void)aDeviant;"))
        ops.append(Op(f"setOnly{U}", "void", [D, (H.ref(), "aValue")], False, mutating=True, logic=(
            cross +
            f"if (!aValue.internal_intf()) {{\n" + indent(leave_container) + ("\n" if leave_container else "") +
            f"    removeOnly{slot}(aDeviant);\n    return;\n}}\n"
            f"{H} current = get{U}(aDeviant);\n"
            f"if (current.internal_intf()) {{\n"
            f"    if (current == aValue)\n        return;\n" + indent(drop) + ("\n" if drop else "") +
            f"}}\n"
            f"setOnly{slot}(aDeviant, ImmutableClassObject(aValue));\n" + enter)))
        pl.ops = ops
        return pl


# -- derived views --------------------------------------------------------------------------
# A derived multi-valued property is a view over what is stored, read afresh at every use:
#   a union       its parts in the class at hand, one after another (Views.h `unionOf`);
#   a restriction the one stored list it subsets, shown for its own type (`filtered`);
# and two unions that the container relation answers whole, read-only: one that subsets the
# containee list directly (`ownedElement`) is that list for its type, and one whose parts are
# all containment ends (`featuringClassifier`) is the container slot for its type.

def _is_a(t, base) -> bool:
    return t is base or any(_is_a(b, base) for b in t.bases)


def restricted_list(p: Prop) -> Optional[Prop]:
    """The stored list a derived property shows for its own type, if that is what it is."""
    if p.union or len(p.subsets) != 1:
        return None
    q = p.subsets[0].target
    return q if q.multi and not q.derived and q.type is not p.type and _is_a(p.type, q.type) else None


def is_view(p: Prop) -> bool:
    return p.multi and p.derived and "containees" not in p.flags and (p.union or restricted_list(p) is not None)


def _available(mm: Metamodel, cls) -> List[Prop]:
    """The properties an object of cls has, its own first, then each ancestor's, depth-first."""
    return [q for c in mm.preorder(cls) for q in c.props]


def _served(q: Prop) -> bool:
    """Has accessors a view can stand on (stored, or itself a view)."""
    return kind_of(q).name in ("list", "sparse_list", "redefinition", "derived_view", "ref", "container_end")


def _direct_parts(mm: Metamodel, cls, u: Prop) -> List[Prop]:
    out: List[Prop] = []
    for q in _available(mm, cls):
        if not any(r.target is u for r in q.subsets) or not _served(q):
            continue
        if any(o.name == q.name for o in out):      # a redefinition is served by one accessor
            continue
        if q.union and is_view(q) and not union_parts(mm, cls, q):
            continue                                 # an empty union would refuse what a later part takes
        out.append(q)
    return out


def _leaves(mm: Metamodel, cls, q: Prop) -> List[Prop]:
    if q.union and is_view(q):
        return [l for p in union_parts(mm, cls, q) for l in _leaves(mm, cls, p)]
    return [q]


def union_parts(mm: Metamodel, cls, u: Prop) -> List[Prop]:
    """The parts of union u in cls. Parts that share a stored list (`member`: `feature` and
    `ownedMember` both show `ownedAttribute`) give way to their stored lists, each once; a part
    that subsets another part is shown by it already."""
    parts = _direct_parts(mm, cls, u)
    sets = [_leaves(mm, cls, q) for q in parts]
    flat: List[Prop] = []
    for l in (l for ls in sets for l in ls):
        if l not in flat:
            flat.append(l)
    if sum(len(ls) for ls in sets) != len(flat):
        parts = flat
    return [q for q in parts if not any(o is not q and o in q.subset_closure() for o in parts)]


def _containee_list(p: Prop) -> Optional[Prop]:
    return next((r.target for r in p.subsets if "containees" in r.target.flags), None)


def _container_slot(mm: Metamodel) -> Prop:
    return next(q for c in mm.all_classes for q in c.props if q.is_container_slot)


def _shows_container(mm: Metamodel, u: Prop) -> bool:
    below = [union_parts(mm, c, u) for c in mm.all_classes if u.owner in mm.preorder(c)]
    return any(below) and all(q.is_container_end for ps in below for q in ps)


def view_expr(mm: Metamodel, cls, u: Prop, plain: bool) -> Tuple[str, set]:
    """The view of u in cls, as an expression, and the classes whose handles it names."""
    T = hmut(u.type)
    W = "WithoutAssociation" if plain else ""
    needs = {u.type.name}
    containees = _containee_list(u)
    if containees is not None:
        return f"readOnly(filtered<{T}>(get{plural(containees.upper_name)}{W}(aDeviant)))", needs
    if u.union and _shows_container(mm, u):
        slot = _container_slot(mm)
        return (f"readOnly(filtered<{T}>(propertyAsSequence(This(aDeviant), aDeviant, "
                f"&{intf(slot.owner)}::sIntrospectiveMethods, {slot.id}, {slot.lower})))", needs | {slot.type.name})
    base = restricted_list(u)
    if base is not None:
        needs.add(base.type.name)
        opp = u.opposite.target if u.opposite else None
        if plain or opp is None:
            return f"filtered<{T}>(get{plural(base.upper_name)}{W}(aDeviant))", needs
        return (f"Sequence<{T}>(family::associationSequence(family::selfCanonical(this), aDeviant,\n"
                f"    get{plural(u.upper_name)}WithoutAssociation(aDeviant).internal_pointer(),\n"
                f"    &{intf(opp.owner)}::sIntrospectiveMethods, {opp.id}), aDeviant)"), needs
    parts = union_parts(mm, cls, u)
    if not parts:
        return f"readOnly(nullSequence<{T}>(aDeviant))", needs
    exprs = []
    for q in parts:
        needs.add(q.type.name)
        if q.multi:
            exprs.append(f"get{plural(q.upper_name)}{W}(aDeviant)")
        else:
            exprs.append(f"propertyAsSequence<{hmut(q.type)}>(This(aDeviant), aDeviant, "
                         f"&{intf(q.owner)}::sIntrospectiveMethods, {q.id}, {q.lower})")
    return f"unionOf<{T}>(aDeviant,\n    " + ",\n    ".join(exprs) + ")", needs


def view_ops(mm: Metamodel, cls, u: Prop, on_handle: bool = True) -> List[Op]:
    E = element_cpp(u)
    seq = CppType(f"Sequence<{E}>", E.handle, E.value)
    Ps = plural(u.upper_name)
    ops = []
    for plain in (False, True):
        expr, needs = view_expr(mm, cls, u, plain)
        ops.append(Op(f"get{Ps}{'WithoutAssociation' if plain else ''}", seq, [D], plain, sequence=E,
                      on_handle=on_handle, logic=f"return {expr};", view_of=sorted(needs)))
    return ops


def view_overrides(mm: Metamodel, cls, plan_of) -> List[Op]:
    """The views cls shows otherwise than the base it inherits them through: its parts differ.
    Each is a virtual of the declaring interface, overridden here."""
    out: List[Op] = []
    for u in _available(mm, cls):
        if u.owner is cls or kind_of(u).name != "derived_view":
            continue
        base = next(b for b in cls.bases if u.owner in mm.preorder(b))
        mine, theirs = view_expr(mm, cls, u, False)[0], view_expr(mm, base, u, False)[0]
        if mine != theirs:
            ops = view_ops(mm, cls, u, on_handle=False)
            for op in ops:
                op.plan = plan_of(u)
            out += ops
    return out


class DerivedView(Kind):
    """A derived multi-valued property served as a view (see view_expr)."""
    name = "derived_view"

    def matches(self, p):
        return is_view(p)

    def plan(self, mm, p):
        return PropPlan(p, self.name, ops=view_ops(mm, p.owner, p))


# First match wins: the order is the precedence of the markers.
KINDS: List[Kind] = [
    Pending(), HandRedefinition(), Hand(), SparseList(), DerivedView(),
    Deferred("derived_list", lambda p: p.multi and p.derived and "containees" not in p.flags,
             "derived multi-valued: hand-maintained semantics (a UML query)"),
    Redefined(lambda p: p.multi and stored_by_redefinition(p)),
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
