"""The C++ emitter: every output of a description, each written by its own emitter."""

from __future__ import annotations

from typing import Dict

from .common import GeneratorError  # noqa: F401  (the command line reports it)
from .handles import HandleEmitter
from .imports import ImportEmitter
from .interfaces import InterfaceEmitter
from .objects import ObjectEmitter
from .tables import TableEmitter


class Emitter(HandleEmitter, InterfaceEmitter, ObjectEmitter, TableEmitter, ImportEmitter):
    def run(self) -> Dict[str, str]:
        for c in self.mm.classes:
            self.emit_handle(c)
            if not c.handwritten:
                self.emit_intf(c)
                self.emit_intf_source(c)
                self.emit_metaregistry(c)
            if c.concrete:
                self.emit_impl(c)
                self.emit_state(c)
        self.emit_prelude()
        self.emit_package_table()
        self.emit_family_header()
        self.emit_meta_slots_header()
        return self.files
