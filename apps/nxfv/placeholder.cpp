// Placeholder so the library target has a source until its first unit lands.
