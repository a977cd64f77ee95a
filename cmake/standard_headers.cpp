// Nothing of its own: its target precompiles the standard headers for the others.
