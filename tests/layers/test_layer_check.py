"""The layer check on a three-layer tree: what it refuses and what it lets through."""
import os
import subprocess
import sys
import tempfile
import unittest

CHECK = os.path.join(os.path.dirname(__file__), "..", "..", "cmake", "tav_layer_check.py")

TABLE = """\
layer base   base export/include/tav/Export.h
layer middle middle
             export/include/tav/middle export/include/tav/top/Root.h   # placed below its folder
layer top    top export/include/tav/top
allow middle/Allowed.cpp tav/top/Top.h
"""


class LayerCheckTest(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()
        self.root = self.dir.name
        self.write("table.txt", TABLE)
        self.write("export/include/tav/top/Top.h", "")
        self.write("export/include/tav/top/Root.h", "#include <string>\n")

    def tearDown(self):
        self.dir.cleanup()

    def write(self, path, text):
        full = os.path.join(self.root, path)
        os.makedirs(os.path.dirname(full), exist_ok=True)
        with open(full, "w") as f:
            f.write(text)
        return full

    def check(self, layer, files, compiled=()):
        stamp = os.path.join(self.root, layer + ".checked")
        args = [sys.executable, CHECK, os.path.join(self.root, "table.txt"), layer, stamp, self.root, "--"]
        args += [os.path.join(self.root, f) for f in files]
        if compiled:
            args += ["--compiled"] + [os.path.join(self.root, f) for f in compiled]
        run = subprocess.run(args, capture_output=True, text=True)
        self.assertEqual(run.returncode == 0, os.path.exists(stamp), "the stamp tells a clean layer")
        return run

    def test_includes_of_a_layer_above_fail_with_file_line_and_layers(self):
        cases = [
            ('#include <tav/top/Top.h>\n', "middle/A.cpp:1: layer 'middle' includes <tav/top/Top.h> of layer 'top'"),
            ('// x\n#include "top/Impl.h"\n', "middle/A.cpp:2: layer 'middle' includes <top/Impl.h> of layer 'top'"),
            ('#include <tav/Export.h>\n#include <tav/middle/M.h>\n#include <tav/top/Root.h>\n#include <vector>\n', None),
        ]
        for text, error in cases:
            self.write("middle/A.cpp", text)
            run = self.check("middle", ["middle/A.cpp", "export/include/tav/top/Root.h"])
            if error:
                self.assertNotEqual(run.returncode, 0, text)
                self.assertIn(error, run.stderr)
            else:
                self.assertEqual(run.returncode, 0, run.stderr)

    def test_allowed_includes_pass_only_from_the_named_file(self):
        self.write("middle/Allowed.cpp", "#include <tav/top/Top.h>\n")
        self.assertEqual(self.check("middle", ["middle/Allowed.cpp"]).returncode, 0)
        self.write("middle/Other.cpp", "#include <tav/top/Top.h>\n")
        self.assertNotEqual(self.check("middle", ["middle/Other.cpp"]).returncode, 0)

    def test_files_of_other_layers_are_passed_over_but_not_compiled(self):
        self.write("top/T.cpp", "#include <tav/top/Top.h>\n")
        self.assertEqual(self.check("base", ["top/T.cpp"]).returncode, 0)
        run = self.check("base", [], compiled=["top/T.cpp"])
        self.assertIn("top/T.cpp: compiled into layer 'base' but owned by layer 'top'", run.stderr)


if __name__ == "__main__":
    unittest.main()
