"""tavgen: the metaclass family generator."""
