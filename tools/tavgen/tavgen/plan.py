"""What the generator plans for each class: operations, state fields and bits; the C++ names."""

from __future__ import annotations

import re
from dataclasses import dataclass, field
from typing import Dict, List, Optional, Tuple

from .model import Metamodel, Prop, Type


def sig_key(op) -> tuple:
    return (op.name, tuple(t for t, _ in op.params), op.const)

NS_I = "NSInterface::"


def intf(t: Type) -> str:
    return "ObjectIntf" if t.handwritten else f"{t.name}Intf"


class CppType(str):
    """A C++ type as written, knowing the metamodel type it names: the class of a handle, or the
    primitive or enumeration of a value class. Emitters ask it what to include; nothing re-reads
    the text."""

    def __new__(cls, text: str, handle: Optional[Type] = None, value: Optional[Type] = None):
        self = super().__new__(cls, text)
        self.handle, self.value = handle, value
        return self

    def ref(self) -> "CppType":
        return CppType(f"{self} const&", self.handle, self.value)


def resolve_cpp(text: str, mm: Metamodel) -> CppType:
    """A type written in the description (an operation's signature): what it names, found once here."""
    words = re.findall(r"[A-Za-z_][\w:]*", text)
    for w in words:
        name = w.split("::")[-1]
        t = mm.by_name.get(name[len("Immutable"):] if name.startswith("Immutable") else name)
        if t is not None and t.is_class and name.startswith("Immutable"):
            return CppType(text, handle=t)
        if t is not None and not t.is_class and value_cpp(t):
            return CppType(text, value=t)
    return CppType(text)


def himm(t: Type) -> CppType:
    return CppType(f"Immutable{t.name}", handle=t)


def hmut(t: Type) -> str:
    return t.name


def value_cpp(t: Type) -> Optional[CppType]:
    if t.kind == "enumeration":
        return CppType(f"{t.home.namespace}::{t.name}", value=t)
    return CppType(t.cpp, value=t) if t.cpp else None


def value_header(t: Type) -> Optional[str]:
    if t.kind == "enumeration":
        return f"{t.home.include_root}/{t.name}.h"
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
    sequence: Optional["CppType"] = None  # a sequence getter: the element type of its Sequence
    plan: Optional["PropPlan"] = field(default=None, repr=False, compare=False)  # the property it serves
    view_of: Optional[List[str]] = None  # a view's body: the classes whose handles it names

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
            f'family::notYetAvailable("{name}", "kernel/{owner.home.package}/NSImplementation/{owner.name}Impl", __LINE__);')


def frame_ops(mm: Metamodel) -> List[Op]:
    """The object side of the class-object frame, declared on the frame class."""
    D = ("Deviant", "aDeviant")
    ops = [
        Op("getMetaClass", "ImmutableClass", [D], True, pure=True, frame=True),
        Op("hasObjectIndex", "bool", [D], True, pure=True, frame=True),
        Op("removeObjectIndex", "void", [D], False, pure=True, mutating=True, frame=True),
        Op("setObjectIndex", "void", [D, ("Integer const&", "aIndex")], False, pure=True, mutating=True,
           frame=True),
        Op("getObjectIndex", "Integer", [D], True, pure=True, frame=True),
    ]
    for op in ops:
        op.ret = resolve_cpp(op.ret, mm)
        op.params = [(resolve_cpp(t, mm), n) for t, n in op.params]
    return ops


class Plans:
    """Per-class plans, computed once."""

    def __init__(self, mm: Metamodel):
        from .kinds import plan_prop
        self.mm = mm
        self.props: Dict[str, List[PropPlan]] = {
            c.name: [plan_prop(mm, p) for p in c.props] for c in mm.all_classes}
        for plans in self.props.values():
            for pl in plans:
                for op in pl.ops:
                    op.plan = pl
        from .kinds import view_overrides
        self.overrides: Dict[str, List[Op]] = {c.name: view_overrides(mm, c, self.plan_of) for c in mm.all_classes}

    def plan_of(self, p: Prop) -> PropPlan:
        return next(pl for pl in self.props[p.owner.name] if pl.prop is p)

    def declared_ops(self, cls: Type) -> List[Op]:
        """Operations the description declares; bodies are hand-maintained unless pending."""
        return [Op(o.name, resolve_cpp(o.ret, self.mm), [(resolve_cpp(t, self.mm), n) for t, n in o.params],
                   o.const, pure=o.pure, on_handle=False,
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
        groups += [(o.name, [o]) for o in (frame_ops(self.mm) if cls.frame else [])]
        groups += [(pl.prop.name, pl.ops) for pl in self.props[cls.name]]
        # A view redefined for this class's parts takes no slot of its own.
        overrides = self.overrides.get(cls.name, [])
        if not cls.order:
            return [op for _, g in groups for op in g] + overrides
        return [op for n in dict.fromkeys(cls.order) for m, g in groups if m == n for op in g] + overrides

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
