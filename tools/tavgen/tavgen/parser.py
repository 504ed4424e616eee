"""Reads a .tavmeta description; every error names the file and line."""

from __future__ import annotations

import os
import re
import shlex
from typing import List, Optional

from .model import FRAME_OPS, UNLIMITED, Metamodel, Operation, Prop, Ref, Type

PROP_FLAGS = {"composite", "derived", "union", "readonly", "ordered", "transient",
              "private", "sparse", "container", "deferred", "containees", "writable", "pending",
              "hand", "contains"}
OP_FLAGS = {"pure", "pending"}
CLASS_MARKS = {"handwritten", "frame"}


class DescriptionError(Exception):
    def __init__(self, file: str, line: int, message: str):
        super().__init__(f"{os.path.basename(file)}:{line}: {message}")
        self.file = file
        self.line = line
        self.message = message


class _Parser:
    def __init__(self, text: str, file: str, search: List[str]):
        self.file = file
        self.search = search
        self.lines = text.splitlines()
        self.mm: Optional[Metamodel] = None
        self.current: Optional[Type] = None
        self.last_prop: Optional[Prop] = None

    def fail(self, line: int, message: str):
        raise DescriptionError(self.file, line, message)

    def tokens(self, no: int, raw: str) -> List[str]:
        try:
            lex = shlex.shlex(raw, posix=True, punctuation_chars="")
            lex.whitespace_split = True
            lex.commenters = ""
            return list(lex)
        except ValueError as e:
            self.fail(no, f"cannot split line: {e}")

    def run(self) -> Metamodel:
        for no, raw in enumerate(self.lines, start=1):
            stripped = raw.strip()
            if not stripped or stripped.startswith("#"):
                continue
            indented = raw[0] in " \t"
            toks = self.tokens(no, stripped)
            if self.mm is None:
                self.package(no, toks)
            elif toks[0] == "import" and not indented:
                self.import_line(no, toks)
            elif indented:
                self.member(no, toks)
            else:
                self.type_line(no, toks)
        if self.mm is None:
            self.fail(len(self.lines) or 1, "missing 'package NAME slots N' line")
        return self.mm

    # -- lines -----------------------------------------------------------------
    def package(self, no: int, t: List[str]) -> None:
        usage = "expected 'package NAME slots N [namespace NS] [include ROOT]' as the first line"
        if len(t) < 4 or len(t) % 2 or t[0] != "package" or t[2] != "slots" or not t[3].isdigit():
            self.fail(no, usage)
        options = dict(zip(t[4::2], t[5::2]))
        if not set(options) <= {"namespace", "include"}:
            self.fail(no, usage)
        self.mm = Metamodel(package=t[1], slots=int(t[3]), file=self.file,
                            namespace=options.get("namespace", ""), include_root=options.get("include", ""))

    def import_line(self, no: int, t: List[str]) -> None:
        if len(t) != 2:
            self.fail(no, "expected 'import \"DESCRIPTION\"'")
        if self.mm.types:
            self.fail(no, "imports come before the first type")
        here = os.path.dirname(os.path.abspath(self.file))
        path = next((os.path.join(d, t[1]) for d in [here] + self.search if os.path.isfile(os.path.join(d, t[1]))),
                    None)
        if path is None:
            self.fail(no, f"cannot find imported description '{t[1]}'")
        other = parse_file(path, self.search)
        other.importer = self.mm
        for typ in other.imported + other.types:
            if typ.name in self.mm.by_name:
                if self.mm.by_name[typ.name] is not typ:
                    self.fail(no, f"type '{typ.name}' of '{t[1]}' clashes with one imported before")
                continue
            self.mm.imported.append(typ)
            self.mm.by_name[typ.name] = typ

    def index(self, no: int, text: str, what: str) -> int:
        if not text.isdigit():
            self.fail(no, f"type index of '{what}' must be a number, got '{text}'")
        return int(text)

    def type_line(self, no: int, t: List[str]) -> None:
        words = list(t)
        abstract = stereotype = False
        if words and words[0] == "abstract":
            abstract = True
            words.pop(0)
        if not words:
            self.fail(no, "empty type line")
        kind = words.pop(0)
        if kind == "stereotype":
            stereotype, kind = True, "class"
        elif kind not in ("class", "primitive", "enumeration"):
            self.fail(no, f"unknown declaration '{kind}'")
        if abstract and kind != "class":
            self.fail(no, f"only classes can be abstract")
        if len(words) < 3 or words[1] != "=":
            self.fail(no, f"expected '{kind} NAME = INDEX'")
        name = words[0]
        if not re.fullmatch(r"[A-Za-z_][A-Za-z0-9_]*", name):
            self.fail(no, f"bad type name '{name}'")
        typ = Type(name=name, index=self.index(no, words[2], name), kind=kind, line=no,
                   abstract=abstract, stereotype=stereotype, home=self.mm)
        rest = words[3:]
        if kind == "class":
            if rest and rest[0] == ":":
                rest = rest[1:]
                supers = []
                while rest and rest[0] not in CLASS_MARKS:
                    supers.extend(s for s in rest.pop(0).split(",") if s)
                if not supers:
                    self.fail(no, f"class '{name}' has ':' but no superclass")
                typ.supers = supers
            for mark in rest:
                if mark not in CLASS_MARKS:
                    self.fail(no, f"unknown class marker '{mark}'")
                setattr(typ, mark, True)
        elif kind == "primitive":
            while rest:
                key = rest.pop(0)
                if key not in ("cpp", "header") or not rest:
                    self.fail(no, f"expected 'cpp \"TYPE\"' or 'header \"PATH\"', got '{key}'")
                setattr(typ, key, rest.pop(0))
        elif rest:
            self.fail(no, f"unexpected '{rest[0]}' after enumeration '{name}'")
        if name in self.mm.by_name:
            first = self.mm.by_name[name]
            where = f"imported from {first.home.file}" if first.home is not self.mm else f"first at line {first.line}"
            self.fail(no, f"type '{name}' declared twice ({where})")
        clash = next((o for o in self.mm.types if o.index == typ.index), None)
        if clash:
            self.fail(no, f"type index {typ.index} of '{name}' already used by '{clash.name}'")
        if not 0 < typ.index < self.mm.slots:
            self.fail(no, f"type index {typ.index} of '{name}' outside 1..{self.mm.slots - 1}")
        self.mm.types.append(typ)
        self.mm.by_name[name] = typ
        self.current, self.last_prop = typ, None

    def member(self, no: int, t: List[str]) -> None:
        if self.current is None:
            self.fail(no, "indented line outside a type")
        head = t[0]
        if head == "doc":
            if len(t) != 2:
                self.fail(no, "expected 'doc \"TEXT\"'")
            (self.last_prop or self.current).docs.append(t[1])
            return
        if head == "operation":
            if self.current.kind != "class" or len(t) < 2 or not set(t[2:]) <= OP_FLAGS:
                self.fail(no, "expected 'operation \"C++ SIGNATURE\" [pure | pending]' in a class")
            op = self.operation(no, t[1], "pure" in t[2:])
            op.pending = "pending" in t[2:]
            self.current.operations.append(op)
            return
        if head == "order":
            if self.current.kind != "class" or len(t) < 2:
                self.fail(no, "expected 'order NAME...' in a class")
            self.current.order.extend(t[1:])
            return
        if head == "holds":
            if self.current.kind != "class" or len(t) != 4 or t[2] != "header":
                self.fail(no, "expected 'holds \"C++ MEMBER\" header \"INCLUDE PATH\"' in a class")
            self.current.holds.append((t[1], t[3]))
            return
        if head == "literals":
            if self.current.kind != "enumeration":
                self.fail(no, f"'literals' in non-enumeration '{self.current.name}'")
            if len(t) < 2:
                self.fail(no, f"enumeration '{self.current.name}' has no literals")
            self.current.literals.extend(t[1:])
            return
        if not head.isdigit():
            self.fail(no, f"expected a property row 'ID NAME : TYPE [LO..HI] ...', got '{head}'")
        if self.current.kind != "class":
            self.fail(no, f"property row in non-class '{self.current.name}'")
        self.current.props.append(self.prop(no, t))
        self.last_prop = self.current.props[-1]

    def operation(self, no: int, sig: str, pure: bool) -> Operation:
        m = re.fullmatch(r"\s*(.+?)\s*\b([A-Za-z_]\w*)\s*\((.*)\)\s*(const)?\s*", sig)
        if not m:
            self.fail(no, f"cannot read the signature '{sig}'")
        params = []
        for part in filter(None, (s.strip() for s in m.group(3).split(","))):
            pm = re.fullmatch(r"(.+?)\s*\b([A-Za-z_]\w*)", part)
            if not pm or not pm.group(1).strip():
                self.fail(no, f"parameter '{part}' of '{m.group(2)}' needs a type and a name")
            params.append((pm.group(1).strip(), pm.group(2)))
        return Operation(m.group(1), m.group(2), params, bool(m.group(4)), pure, no)

    def ref(self, no: int, text: str) -> Ref:
        m = re.fullmatch(r"([A-Za-z_]\w*)\.([A-Za-z_]\w*)", text)
        if not m:
            self.fail(no, f"expected 'Class.property', got '{text}'")
        return Ref(m.group(1), m.group(2), no)

    def prop(self, no: int, t: List[str]) -> Prop:
        if len(t) < 5 or t[2] != ":":
            self.fail(no, "expected 'ID NAME : TYPE [LO..HI]'")
        m = re.fullmatch(r"\[(\d+)\.\.(\d+|\*)\]", t[4])
        if not m:
            self.fail(no, f"bad multiplicity '{t[4]}' in property '{t[1]}'")
        lower = int(m.group(1))
        upper = UNLIMITED if m.group(2) == "*" else int(m.group(2))
        if upper == 0 or lower > upper:
            self.fail(no, f"bad multiplicity '{t[4]}' in property '{t[1]}'")
        p = Prop(id=int(t[0]), name=t[1], type_name=t[3], lower=lower, upper=upper, line=no,
                 owner=self.current)
        rest = t[5:]
        while rest:
            w = rest.pop(0)
            if w in PROP_FLAGS:
                p.flags.add(w)
            elif w in ("default", "association", "end"):
                if not rest:
                    self.fail(no, f"'{w}' without a value in property '{p.name}'")
                setattr(p, w, rest.pop(0))
            elif w == "opposite":
                if not rest:
                    self.fail(no, f"'opposite' without a value in property '{p.name}'")
                p.opposite = self.ref(no, rest.pop(0))
            elif w in ("subsets", "redefines"):
                refs = getattr(p, w)
                while rest and "." in rest[0]:
                    refs.append(self.ref(no, rest.pop(0)))
                if not refs:
                    self.fail(no, f"'{w}' without a property in property '{p.name}'")
            else:
                self.fail(no, f"unknown word '{w}' in property '{p.name}'")
        if (p.opposite or p.end is not None) and not p.association:
            self.fail(no, f"property '{p.name}' names an opposite end but no association")
        if p.opposite and p.end is not None:
            self.fail(no, f"property '{p.name}' has both 'opposite' and 'end'")
        return p


def _resolve(mm: Metamodel) -> None:
    def fail(line: int, message: str):
        raise DescriptionError(mm.file, line, message)

    def find(ref: Ref, what: str, owner: Prop) -> Prop:
        cls = mm.by_name.get(ref.cls)
        if cls is None or not cls.is_class:
            fail(ref.line, f"unknown class '{ref.cls}' in {what} of property '{owner.name}'")
        for q in cls.props:
            if q.name == ref.prop:
                ref.target = q
                return q
        fail(ref.line, f"class '{ref.cls}' has no property '{ref.prop}' ({what} of '{owner.name}')")

    for t in mm.types:
        if t.kind == "enumeration" and not t.literals:
            fail(t.line, f"enumeration '{t.name}' has no literals")
        for s in t.supers:
            b = mm.by_name.get(s)
            if b is None:
                fail(t.line, f"unknown superclass '{s}' of '{t.name}'")
            if not b.is_class:
                fail(t.line, f"superclass '{s}' of '{t.name}' is not a class")
            if b in t.bases:
                fail(t.line, f"superclass '{s}' of '{t.name}' named twice")
            t.bases.append(b)
    for t in mm.classes:  # cycles
        seen, todo = set(), list(t.bases)
        while todo:
            b = todo.pop()
            if b is t:
                fail(t.line, f"class '{t.name}' inherits from itself")
            if b.name not in seen:
                seen.add(b.name)
                todo.extend(b.bases)
    frames = [t for t in mm.all_classes if t.frame]
    if len(frames) > 1:
        fail(frames[1].line, "more than one class marked 'frame'")
    if frames and frames[0].name != "ClassObject":
        # The hand-written runtime knows the frame as ClassObjectIntf.
        fail(frames[0].line, f"the frame class must be named 'ClassObject', not '{frames[0].name}'")
    for t in mm.classes:
        names = {}
        for expected, p in enumerate(t.props, start=1):
            if p.id != expected:
                fail(p.line, f"property '{p.name}' of '{t.name}' has id {p.id}, expected {expected}")
            if p.name in names:
                fail(p.line, f"property '{p.name}' declared twice in '{t.name}'")
            names[p.name] = p
            p.type = mm.by_name.get(p.type_name)
            if p.type is None:
                fail(p.line, f"unknown type '{p.type_name}' in property '{p.name}'")
            if p.association and not p.type.is_class:
                fail(p.line, f"property '{p.name}' is an association end of non-class type '{p.type_name}'")
            if p.default is not None and p.type.kind == "enumeration" and p.default not in p.type.literals:
                fail(p.line, f"default '{p.default}' of property '{p.name}' is no literal of '{p.type_name}'")
            number = {"Integer": r"-?\d+", "UnlimitedNatural": r"\d+|\*"}.get(p.type.name)
            if p.default is not None and number and not re.fullmatch(number, p.default):
                fail(p.line, f"default '{p.default}' of property '{p.name}' is no number of '{p.type_name}'")
    for t in mm.classes:
        for p in t.props:
            for r in p.subsets:
                find(r, "subsets", p)
            for r in p.redefines:
                find(r, "redefines", p)
            if p.opposite:
                o = find(p.opposite, "opposite", p)
                if o.opposite is None or o.opposite.cls != t.name or o.opposite.prop != p.name:
                    fail(p.line, f"opposite of '{t.name}.{p.name}' is '{o.owner.name}.{o.name}', "
                                 f"whose opposite is not '{t.name}.{p.name}'")
                if o.association != p.association:
                    fail(p.line, f"'{t.name}.{p.name}' and its opposite name different associations")
                related = (o.owner is p.type or o.owner in mm.ancestors(p.type)
                           or p.type in mm.ancestors(o.owner))
                if not related:
                    fail(p.line, f"opposite '{o.owner.name}.{o.name}' of '{t.name}.{p.name}' "
                                 f"is not a property of type '{p.type.name}'")

    for t in mm.classes:
        names = set()
        for op in t.operations:
            key = (op.name, tuple(ty for ty, _ in op.params))
            if key in names:
                fail(op.line, f"operation '{op.name}' declared twice in '{t.name}'")
            names.add(key)
            if op.pure and not t.handwritten:
                # A generated object class is final: nobody could implement it.
                fail(op.line, f"operation '{op.name}' of generated class '{t.name}' cannot be pure")
        if t.order:
            names = {op.name for op in t.operations} | {p.name for p in t.props}
            names |= set(FRAME_OPS) if t.frame else set()
            unknown = [n for n in t.order if n not in names]
            missing = sorted(names - set(t.order))
            if unknown or missing:
                fail(t.line, f"order of '{t.name}' must name each operation and property once: "
                             f"unknown {unknown}, missing {missing}")
        if t.handwritten and (t.props or t.bases):
            fail(t.line, f"hand-written class '{t.name}' can have neither properties nor superclasses")
    generated = [t for t in mm.classes if not t.handwritten]
    if generated and not frames:
        fail(generated[0].line, "no class is marked 'frame'")
    for t in generated:
        if not t.frame and frames[0] not in mm.ancestors(t):
            fail(t.line, f"class '{t.name}' does not derive from the frame class '{frames[0].name}'")
    slots = [p for t in mm.all_classes for p in t.props if p.is_container_slot]
    for p in slots:
        if not p.owner.frame or p.multi or not p.type.is_class:
            fail(p.line, f"'container' marks a single-valued reference of the frame class, not '{p.name}'")
    if len(slots) > 1:
        fail(slots[1].line, "more than one property marked 'container'")


def parse(text: str, file: str = "<string>", search: Optional[List[str]] = None) -> Metamodel:
    """`search`: folders where imported descriptions are looked for after the importer's own."""
    mm = _Parser(text, file, search or []).run()
    _resolve(mm)
    return mm


def parse_file(path: str, search: Optional[List[str]] = None) -> Metamodel:
    with open(path, encoding="utf-8") as f:
        return parse(f.read(), path, search)
