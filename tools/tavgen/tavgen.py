#!/usr/bin/env python3
"""Entry point that works without installing the package."""
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from tavgen.__main__ import main  # noqa: E402

sys.exit(main())
