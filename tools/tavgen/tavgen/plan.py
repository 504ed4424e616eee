"""What the generator emits for each property: operations, their bodies and the state field.

Bodies are C++ statement templates. `{bit}` stands for the property's setFlags bit in the
concrete state class, `{S}` for the state class; `s` names the state inside XImpl overrides.
"""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import Dict, List, Optional, Tuple

from .model import UNLIMITED, Metamodel, Prop, Type


def sig_key(op) -> tuple:
    return (op.name, tuple(t for t, _ in op.params), op.const)

NS_I = "NSInterface::"


def intf(t: Type) -> str:
    return "ObjectIntf" if t.handwritten else f"{t.name}Intf"


def himm(t: Type) -> str:
    return f"Immutable{t.name}"


def hmut(t: Type) -> str:
    return t.name


def value_cpp(t: Type) -> Optional[str]:
    if t.kind == "enumeration":
        return f"TAV::{t.name}"
    return t.cpp


def value_header(t: Type) -> Optional[str]:
    if t.kind == "enumeration":
        return f"tav/TAV/{t.name}.h"
    return t.header


def plural(name: str) -> str:
    if name.endswith("y") and name[-2:-1] not in "aeiou":
        return name[:-1] + "ies"
    if name.endswith(("s", "x", "ch", "sh")):
        return name + "es"
    return name + "s"


@dataclass
class Op:
    name: str
    ret: str
    params: List[Tuple[str, str]]
    const: bool
    pure: bool = False
    mutating: bool = False
    logic: Optional[str] = None    # body of the XIntf version
    impl: Optional[str] = None     # body of the XImpl override (direct state read)
    state: Optional[str] = None    # body of the XDeviantImpl override
    on_handle: bool = True
    static: bool = False
    frame: bool = False             # object-side operation of the frame
    override: bool = False          # replaces an ancestor's operation; body hand-maintained

    def signature(self, qualify: str = "", with_names: bool = True) -> str:
        ps = ", ".join(f"{t} {n}" if with_names and n else t for t, n in self.params)
        q = f"{qualify}::" if qualify else ""
        return f"{self.ret} {q}{self.name}({ps}){' const' if self.const else ''}"

    def call_args(self) -> str:
        return ", ".join(n for _, n in self.params)


@dataclass
class Field:
    ctype: str
    name: str
    init: str                       # initialiser expression ("" for default construction)
    bit: bool = False               # takes a setFlags bit


@dataclass
class PropPlan:
    prop: Prop
    kind: str
    ops: List[Op] = field(default_factory=list)
    field: Optional[Field] = None
    deferred: Optional[str] = None   # why nothing is emitted yet
    sparse_map: Optional[Tuple[str, str]] = None  # (value type, accessor name)
    upkeep: Optional[Prop] = None    # opposite end whose raw list we maintain


def literal(p: Prop) -> str:
    """C++ initialiser of the property's default value."""
    t = p.type
    d = p.default
    if t.kind == "enumeration":
        return str(t.literals.index(d)) if d is not None else "0"
    if d is None:
        return ""
    if t.name == "Boolean":
        return d
    if t.name == "UnlimitedNatural":
        return "0xFFFFFFFFu" if d == "*" else f"{int(d)}u"
    if t.name in ("Integer",):
        return str(int(d))
    if t.name in ("Real", "Double", "Single"):
        return d
    return '"' + d.replace("\\", "\\\\").replace('"', '\\"') + '"'


def stored_by_redefinition(p: Prop) -> bool:
    """A same-named redefinition of a stored property adds nothing: the inherited one serves."""
    for r in p.redefines:
        if r.prop == p.name and not r.target.derived:
            return True
    return False


def bit_props(mm: Metamodel, cls: Type) -> List[Prop]:
    """Properties that own a setFlags bit, in bit order (the state's field order)."""
    out = []
    for c in mm.preorder(cls):
        for p in c.props:
            if (not p.multi and p.is_value and not p.derived and p.lower == 0
                    and not stored_by_redefinition(p)):
                out.append(p)
    return out


def flags_type(n: int) -> str:
    return "std::uint8_t" if n <= 8 else "std::uint16_t" if n <= 16 else "std::uint32_t"


def void_params(params: List[Tuple[str, str]]) -> str:
    return "".join(f"(void){n};\n" for _, n in params)


def pending(name: str, params: List[Tuple[str, str]], owner: Type) -> str:
    """Body of a slot whose behaviour comes with a later milestone."""
    return (void_params(params) +
            f'family::notYetAvailable("{name}", "kernel/TAV/NSImplementation/{owner.name}Impl", __LINE__);')


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
               Op(f"set{U}", "void", [D, (f"{cpp} const&", "aValue")], False, mutating=True),
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
    return next((q for c in mm.classes for q in c.props if "containees" in q.flags), None)


def redefined_override_ops(mm: Metamodel, p: Prop) -> List[Op]:
    """A derived redefinition answered by hand: the redefined group's operations, overridden."""
    target = next(r.target for r in p.redefines if r.prop == p.name)
    out = []
    for op in plan_prop(mm, target).ops:
        out.append(Op(op.name, op.ret, list(op.params), op.const, mutating=op.mutating,
                      on_handle=False, override=True))
    return out


def plan_prop(mm: Metamodel, p: Prop) -> PropPlan:
    U = p.upper_name
    D = ("Deviant", "aDeviant")
    pid = p.id

    if "pending" in p.flags:
        return PropPlan(p, "pending", ops=pending_ops(p))
    if "hand" in p.flags:
        if p.redefines_same_name:
            return PropPlan(p, "hand_redefinition", ops=redefined_override_ops(mm, p))
        return PropPlan(p, "hand", ops=hand_ops(p))

    if p.multi:
        if p.sparse and p.is_reference:
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
        if p.derived and "containees" not in p.flags:
            return PropPlan(p, "derived_list", deferred="derived multi-valued: a view sequence")
        if stored_by_redefinition(p):
            return PropPlan(p, "redefinition", deferred="served by the redefined property")
        if not p.is_reference:
            return PropPlan(p, "value_list", deferred="multi-valued primitive: sequences milestone")
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

    # -- single-valued ---------------------------------------------------------------
    if "deferred" in p.flags:
        return PropPlan(p, "deferred", deferred="marked deferred in the description")
    if p.is_value:
        cpp = value_cpp(p.type)
        if cpp is None:
            return PropPlan(p, "unbound", deferred=f"no C++ value class for '{p.type.name}' yet")
        getter = p.name if (p.type.name == "Boolean" and p.name.startswith("is")
                            and p.name[2:3].isupper()) else f"get{U}"
        if p.sparse:
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
                Op(f"set{U}", "void", [D, (f"{cpp} const&", "aValue")], False, mutating=True, logic=(
                    f"if (has{U}(aDeviant) && {getter}(aDeviant) == aValue)\n    return;\n"
                    f"{p.name}_sparse()[{key_w}] = aValue;")),
                Op(getter, cpp, [D], True, logic=(
                    f"auto const* s = {key_r};\n"
                    f"auto const& map = {p.name}_sparse();\n"
                    f"auto it = s ? map.find(s) : map.end();\n"
                    f"return it != map.end() ? it->second : {cpp}({dflt});")),
            ]
            return pl
        if p.derived:
            return PropPlan(p, "derived", deferred="derived: hand-maintained semantics")
        if stored_by_redefinition(p):
            return PropPlan(p, "redefinition", deferred="served by the redefined property")
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
        pl.ops.append(Op(f"set{U}", "void", [D, (f"{cpp} const&", "aValue")], False, mutating=True,
                         logic=unchanged + f"getWriteDeviantI(aDeviant, this)->set{U}(aDeviant, aValue);",
                         state=store))
        pl.ops.append(Op(getter, cpp, [D], True, pure=True, impl=f"return s->{fname};",
                         state=f"return {fname};"))
        return pl

    # references
    T = p.type
    H = himm(T)
    opp = p.opposite.target if p.opposite else None
    upkeep = opp if (opp is not None and opp.stored_list) else None
    cross = ""
    if p.opposite:
        cross = (f"if (aValue.internal_intf())\n"
                 f"    family::crossModelCheck(aDeviant, aValue.getDeviant(), &sIntrospectiveMethods, {pid},\n"
                 f"                            \"kernel/TAV/NSImplementation/{p.owner.name}Impl\", __LINE__);\n")
    self_expr = "family::selfCanonical(this)"
    if p.is_container_slot or (not p.is_container_end and not p.derived and not stored_by_redefinition(p)):
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
        ops.append(Op(f"set{U}", "void", [D, (f"{H} const&", "aValue")], False, mutating=True, logic=(
            cross +
            f"if (has{U}(aDeviant) && get{U}(aDeviant) == aValue)\n    return;\n"
            f"setOnly{U}(aDeviant, aValue);\n" + push)))
        ops.append(Op(f"get{U}", H, [D], True, pure=True, impl=f"return {H}(s->{fname}, aDeviant);",
                      state=f"return {H}({fname}, aDeviant);"))
        ops.append(Op(f"removeOnly{U}", "void", [D], False, mutating=True, logic=(
            f"{H} current = get{U}(aDeviant);\n"
            f"if (!current.internal_intf())\n    return;\n" + unrefer +
            f"getWriteDeviantI(aDeviant, this)->removeOnly{U}(aDeviant);"),
            state=f"{fname} = nullptr;"))
        ops.append(Op(f"setOnly{U}", "void", [D, (f"{H} const&", "aValue")], False, mutating=True, logic=(
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

    if p.is_container_end:
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
        ops.append(Op(f"set{U}", "void", [D, (f"{H} const&", "aValue")], False, mutating=True, logic=(
            cross +
            f"if (has{slot}(aDeviant) && get{U}(aDeviant) == aValue)\n    return;\n"
            f"setOnly{U}(aDeviant, aValue);\n" + push)))
        ops.append(get)
        if optional:
            ops.append(Op(f"removeOnly{U}", "void", [D], False, mutating=True, logic=(
                f"if (!has{U}(aDeviant))\n    return;\n"
                f"removeOnly{slot}(aDeviant);")))
        else:
            ops.append(Op(f"removeOnly{U}", "void", [D], False, mutating=True, logic="(void)aDeviant;"))
        ops.append(Op(f"setOnly{U}", "void", [D, (f"{H} const&", "aValue")], False, mutating=True, logic=(
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
    if stored_by_redefinition(p):
        return PropPlan(p, "redefinition", deferred="served by the redefined property")
    return PropPlan(p, "derived", deferred="derived: hand-maintained semantics")


def sequence_ops(p: Prop) -> List[Op]:
    """Where getPs and getPsWithoutAssociation go, in the property's place of the interface.

    They wrap the raw list (`internal_rawPs`) into typed sequences and come with the sequence
    containers; until then nothing is emitted rather than something that only looks like them.
    """
    return []


def frame_ops() -> List[Op]:
    """The object side of the class-object frame, declared on the frame class."""
    D = ("Deviant", "aDeviant")
    return [
        Op("getMetaClass", "ImmutableClass", [D], True, pure=True, frame=True),
        Op("hasObjectIndex", "bool", [D], True, pure=True, frame=True),
        Op("removeObjectIndex", "void", [D], False, pure=True, mutating=True, frame=True),
        Op("setObjectIndex", "void", [D, ("Integer const&", "aIndex")], False, pure=True, mutating=True,
           frame=True),
        Op("getObjectIndex", "Integer", [D], True, pure=True, frame=True),
    ]


class Plans:
    """Per-class plans, computed once."""

    def __init__(self, mm: Metamodel):
        self.mm = mm
        self.props: Dict[str, List[PropPlan]] = {
            c.name: [plan_prop(mm, p) for p in c.props] for c in mm.classes}

    def declared_ops(self, cls: Type) -> List[Op]:
        """Operations the description declares; bodies are hand-maintained unless pending."""
        return [Op(o.name, o.ret, list(o.params), o.const, pure=o.pure, on_handle=False,
                   logic=pending(o.name, o.params, cls) if o.pending else None)
                for o in cls.operations]

    def hand_overrides(self, cls: Type) -> set:
        """Signatures that a class of cls's ancestry answers by hand over a generated one."""
        return {sig_key(op) for c in self.mm.preorder(cls)
                for pl in self.props.get(c.name, []) for op in pl.ops if op.override}

    def own_ops(self, cls: Type) -> List[Op]:
        """What the class's interface declares itself (the hand-written root: what it has),
        in its `order` where it has one: the virtual layout is every domain library's interface."""
        groups: List[Tuple[str, List[Op]]] = [(o.name, [o]) for o in self.declared_ops(cls)]
        groups += [(o.name, [o]) for o in (frame_ops() if cls.frame else [])]
        groups += [(pl.prop.name, pl.ops) for pl in self.props[cls.name]]
        if not cls.order:
            return [op for _, g in groups for op in g]
        return [op for n in dict.fromkeys(cls.order) for m, g in groups if m == n for op in g]

    def fields(self, cls: Type) -> List[Tuple[Type, PropPlan]]:
        return [(c, pl) for c in self.mm.preorder(cls) for pl in self.props[c.name] if pl.field]

    def bits(self, cls: Type) -> Dict[Tuple[str, str], int]:
        return {(p.owner.name, p.name): i for i, p in enumerate(bit_props(self.mm, cls))}

    def initial_flags(self, cls: Type) -> int:
        v = 0
        for i, p in enumerate(bit_props(self.mm, cls)):
            if not p.sparse and p.default not in (None, ""):
                v |= 1 << i
        return v

    def sparse(self, cls: Type) -> List[PropPlan]:
        return [pl for c in self.mm.preorder(cls) for pl in self.props[c.name] if pl.sparse_map]

    def deferred(self) -> List[Tuple[str, str, str]]:
        return [(c.name, pl.prop.name, pl.deferred) for c in self.mm.classes
                for pl in self.props[c.name] if pl.deferred]
