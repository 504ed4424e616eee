"""In-memory form of a metamodel description and the queries the emitters need."""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import Tuple, Dict, List, Optional

UNLIMITED = 0xFFFFFFFF

# The object-side operations of the frame class, which every object class implements.
FRAME_OPS = ("getMetaClass", "hasObjectIndex", "removeObjectIndex", "setObjectIndex", "getObjectIndex")


@dataclass
class Ref:
    """`Class.prop` as written; resolved after parsing."""
    cls: str
    prop: str
    line: int
    target: Optional["Prop"] = None


@dataclass
class Prop:
    id: int
    name: str
    type_name: str
    lower: int
    upper: int
    line: int
    owner: "Type" = None
    flags: set = field(default_factory=set)
    default: Optional[str] = None
    association: Optional[str] = None
    opposite: Optional[Ref] = None
    end: Optional[str] = None
    subsets: List[Ref] = field(default_factory=list)
    redefines: List[Ref] = field(default_factory=list)
    docs: List[str] = field(default_factory=list)
    type: "Type" = None

    # -- kinds -------------------------------------------------------------
    @property
    def multi(self) -> bool:
        return self.upper != 1

    @property
    def derived(self) -> bool:
        return "derived" in self.flags

    @property
    def union(self) -> bool:
        return "union" in self.flags

    @property
    def readonly(self) -> bool:
        return "readonly" in self.flags

    @property
    def sparse(self) -> bool:
        return "sparse" in self.flags

    @property
    def stored_list(self) -> bool:
        """A multi-valued reference with storage of its own (in the state or a sparse map)."""
        return self.multi and self.type.kind == "class" and (not self.derived or "containees" in self.flags)

    @property
    def is_container_slot(self) -> bool:
        return "container" in self.flags

    @property
    def is_reference(self) -> bool:
        return self.type.kind == "class"

    @property
    def is_value(self) -> bool:
        return self.type.kind in ("primitive", "enumeration")

    def subset_closure(self) -> List["Prop"]:
        seen: List[Prop] = []
        todo = [r.target for r in self.subsets]
        while todo:
            p = todo.pop(0)
            if p in seen:
                continue
            seen.append(p)
            todo.extend(r.target for r in p.subsets)
        return seen

    @property
    def is_container_end(self) -> bool:
        """Single-valued ends that live in the object's container slot."""
        if self.multi or self.is_container_slot:
            return False
        return any(p.is_container_slot for p in self.subset_closure())

    @property
    def redefines_same_name(self) -> bool:
        return any(r.prop == self.name for r in self.redefines)

    @property
    def upper_name(self) -> str:
        return self.name[0].upper() + self.name[1:]


@dataclass
class Operation:
    """A C++ operation of a metaclass interface, declared in the description."""
    ret: str
    name: str
    params: List[tuple]            # (type, name)
    const: bool
    pure: bool
    line: int
    pending: bool = False          # declared now; its body raises until its milestone lands


@dataclass
class Type:
    name: str
    index: int
    kind: str                      # class, primitive, enumeration
    line: int
    abstract: bool = False
    stereotype: bool = False
    handwritten: bool = False      # interface written by hand (no XIntf emitted)
    frame: bool = False            # the class-object frame root
    supers: List[str] = field(default_factory=list)
    props: List[Prop] = field(default_factory=list)
    literals: List[str] = field(default_factory=list)
    cpp: Optional[str] = None      # C++ value type of a primitive
    header: Optional[str] = None   # its header
    docs: List[str] = field(default_factory=list)
    bases: List["Type"] = field(default_factory=list)
    operations: List["Operation"] = field(default_factory=list)
    order: List[str] = field(default_factory=list)  # interface order, where not definition order
    holds: List[Tuple[str, str]] = field(default_factory=list)  # hand-written members of the object: (declaration, header)
    home: Optional["Metamodel"] = None  # the description that declares it

    @property
    def imported(self) -> bool:
        """Declared by an imported description: referred to, never emitted."""
        return self.home is not None and self.home.importer is not None

    @property
    def is_class(self) -> bool:
        return self.kind == "class"

    @property
    def concrete(self) -> bool:
        return self.is_class and not self.abstract


@dataclass
class Metamodel:
    package: str
    slots: int
    file: str
    namespace: str = ""            # C++ namespace of its classes; the package name unless given
    include_root: str = ""         # where its public headers are included from: <ROOT/X_h.h>
    types: List[Type] = field(default_factory=list)      # its own, in declaration order
    imported: List[Type] = field(default_factory=list)   # every type of the descriptions it imports
    by_name: Dict[str, Type] = field(default_factory=dict)
    importer: Optional["Metamodel"] = None               # set on a description read through an import

    def __post_init__(self):
        self.namespace = self.namespace or self.package
        self.include_root = self.include_root or f"tav/{self.package}"

    @property
    def classes(self) -> List[Type]:
        """Its own classes: what is emitted."""
        return [t for t in self.types if t.is_class]

    @property
    def all_classes(self) -> List[Type]:
        """Its own classes and those it imports: what its classes may derive from or refer to."""
        return [t for t in self.imported + self.types if t.is_class]

    @property
    def packages(self) -> List["Metamodel"]:
        """The imported descriptions, each once."""
        out: List[Metamodel] = []
        for t in self.imported:
            if t.home not in out:
                out.append(t.home)
        return out

    def type_at(self, index: int) -> Optional[Type]:
        for t in self.types:
            if t.index == index:
                return t
        return None

    # -- ancestry ------------------------------------------------------------
    def ancestors(self, cls: Type) -> List[Type]:
        """Every ancestor once, depth-first along the bases, nearest first."""
        out: List[Type] = []

        def walk(c: Type) -> None:
            for b in c.bases:
                if b not in out:
                    out.append(b)
                    walk(b)
        walk(cls)
        return out

    def by_distance(self, cls: Type) -> List[Type]:
        """cls, then its ancestors nearest first (breadth-first, bases in order), each once."""
        out, todo = [cls], list(cls.bases)
        while todo:
            c = todo.pop(0)
            if c not in out:
                out.append(c)
                todo.extend(c.bases)
        return out

    def first_chain(self, cls: Type) -> List[Type]:
        """cls, its first base, that one's first base ... up to the root."""
        chain = [cls]
        while chain[-1].bases:
            chain.append(chain[-1].bases[0])
        return chain

    def path_to(self, cls: Type, anc: Type) -> List[Type]:
        """The first base path (depth-first, first base first) from cls to anc, both included."""
        if cls is anc:
            return [cls]
        for b in cls.bases:
            if b is anc or anc in self.ancestors(b):
                return [cls] + self.path_to(b, anc)
        raise KeyError(f"{anc.name} is not an ancestor of {cls.name}")

    def preorder(self, cls: Type) -> List[Type]:
        """cls itself, then its ancestors depth-first, each once: the state's field order."""
        return [cls] + self.ancestors(cls)

    def is_shared_ancestor(self, cls: Type, anc: Type) -> bool:
        """anc is reached through more than one direct base of cls."""
        hits = sum(1 for b in cls.bases if b is anc or anc in self.ancestors(b))
        return hits > 1
